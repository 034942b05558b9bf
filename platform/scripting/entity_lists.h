#pragma once

#include "drawing/AcDbDatabase.h"
#include "lisp/Value.h"
#include "runtime/ResbufChain.h"

#include <string>
#include <vector>

namespace veldrin::scripting {

// Entity data in the two forms: a chain of groups, and the association list that scripts see. There, a group
// is (CODE . VALUE), a point (CODE X Y Z), and extended data (-3 ("APPLICATION" (1000 . "text") ...) ...).
lisp::Value listOfGroups(const resbuf* groups);
// Throws lisp::Error for what is no such list.
ResbufPtr groupsOfList(const lisp::Value& list);

// All of an object as entget shows it: with the extended data of the applications that match one of the
// patterns; nil when it is erased or cannot be read.
lisp::Value entityData(AcDbObjectId id, const std::vector<std::string>& applications = {});

// The value of the first group with that code; null when there is none.
const lisp::Value* groupOf(const lisp::Value& list, int code);

} // namespace veldrin::scripting
