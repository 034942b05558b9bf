#pragma once

#include "runtime/CString.h"
#include "runtime/VeldrinApi.h"

#include <initializer_list>
#include <string_view>
#include <vector>

namespace veldrin::dao {

// A statement of a project's dialect in the engine's words, and the other way to write texts and names.
//
// The dialect knows texts in either kind of quotes, where a double-quoted text is never a name; names with
// blanks stand in brackets. True and False are -1 and 0. A query may declare its parameters in front,
// "PARAMETERS [Pipe] Long, Floor Text; select ...", and then names them as if they were columns.
struct SqlText {
    CString engine;
    std::vector<CString> parameters; // as declared; parameter n of the engine's text is the n-th of them

    int parameterNumber(std::string_view name) const; // from 1; 0 when there is none of this name
};

VELDRIN_API SqlText translateSql(std::string_view sql);

// The verb of a statement, behind comments and brackets.
std::string_view firstWord(std::string_view sql);
bool saysNothing(std::string_view sql); // blanks, comments and semicolons

// A name in brackets. A bracket has no place in a name; it is left out.
VELDRIN_API CString bracketed(std::string_view name);

// A text literal.
VELDRIN_API CString quoted(std::string_view text);

// Without regard to case, A to Z.
bool equalNames(std::string_view a, std::string_view b);
bool isOneOf(std::string_view name, std::initializer_list<std::string_view> names);

} // namespace veldrin::dao
