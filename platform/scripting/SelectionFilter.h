#pragma once

#include "drawing/AcDbObjectId.h"
#include "lisp/Value.h"

#include <memory>

namespace veldrin::scripting {

// A filter list as ssget takes it: groups that an entity must have, texts with wild cards and regardless of
// case;
// (-4 . ">=") and its like before a group compare numbers and points, (-4 . "<OR") to (-4 . "OR>") and AND,
// XOR, NOT combine what stands between; (-3 ("APP")) asks for extended data.
class SelectionFilter {
public:
    // Throws lisp::Error for a list that is none. nil lets everything pass.
    explicit SelectionFilter(const lisp::Value& list);
    ~SelectionFilter();

    bool matches(AcDbObjectId entity) const;

    struct Node;

private:
    std::unique_ptr<Node> m_root;
};

} // namespace veldrin::scripting
