#pragma once

#include "runtime/VeldrinApi.h"

#include <exception>
#include <string>

// The root of what the host and a module throw across their border. Thrown by value, caught by reference.
class VELDRIN_API CException : public std::exception {
public:
    explicit CException(std::string message);
    ~CException() override;

    // The text that a user is shown.
    const std::string& GetErrorMessage() const { return m_message; }
    const char* what() const noexcept override { return m_message.c_str(); }

private:
    std::string m_message;
};

// An argument outside of what an operation can take, an index beyond an array among them.
class VELDRIN_API CInvalidArgException : public CException {
public:
    CInvalidArgException();
    ~CInvalidArgException() override;
};

[[noreturn]] VELDRIN_API void AfxThrowInvalidArgException();
