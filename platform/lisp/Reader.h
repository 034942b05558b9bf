// Text to values.
#pragma once

#include "lisp/Error.h"
#include "lisp/Value.h"

#include <string>
#include <string_view>

namespace veldrin::lisp {

class Engine;

class VELDRIN_API Reader {
public:
    // The text must outlive the reader. `fileName` is for errors.
    Reader(Engine& engine, std::string_view text, std::string_view fileName = {});

    // The next form; false at the end of the text. Throws Error with file and line: "malformed list on
    // input" names the line on which the open list began.
    bool next(Value& form);
    // The byte behind what has been read.
    std::size_t position() const { return at_; }

private:
    struct OpenList;
    Error failure(const char* message, int line) const;
    void skipBlank();
    static Value closeList(OpenList& list);
    Value atomOf(std::string_view token);
    Value readText();
    void readEscape(std::string& into);

    Engine& engine_;
    std::string_view text_;
    std::string file_;
    std::size_t at_ = 0;
    int line_ = 1;
};

// Whether a text holds only whole forms, so that a prompt can ask for the next line of an open one.
VELDRIN_API bool isComplete(std::string_view text);

// Length of the number that a text begins with, 0 when there is none; whether it is written as a real.
std::size_t numberPrefix(std::string_view text, bool& isReal);
// Its value; an integer outside the 32-bit range becomes a real.
Value numberOfPrefix(std::string_view digits, bool isReal);

} // namespace veldrin::lisp
