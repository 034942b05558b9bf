#pragma once

#include "runtime/CString.h"

#include <span>

namespace plumb {

// A choice: what the database keeps and what the user reads. What is not among the choices counts as the
// first.
struct CodeCaption {
    const char* code;
    const char* caption;
};

inline CString captionOf(std::span<const CodeCaption> choices, const CString& code) {
    for (const CodeCaption& choice : choices)
        if (code == choice.code) return choice.caption;
    return choices.front().caption;
}

inline CString codeOf(std::span<const CodeCaption> choices, const CString& caption) {
    for (const CodeCaption& choice : choices)
        if (caption == choice.caption) return choice.code;
    return choices.front().code;
}

} // namespace plumb
