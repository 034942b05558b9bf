#include "runtime/CException.h"

#include <utility>

CException::CException(std::string message) : m_message(std::move(message)) {}
CException::~CException() = default;

CInvalidArgException::CInvalidArgException() : CException("An invalid argument was encountered.") {}
CInvalidArgException::~CInvalidArgException() = default;

void AfxThrowInvalidArgException() {
    throw CInvalidArgException();
}
