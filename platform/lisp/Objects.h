// The heap objects behind values of the kinds Builtin to CatchError.
#pragma once

#include "lisp/Engine.h"
#include "lisp/Heap.h"
#include "lisp/Node.h"

#include <memory>
#include <string>
#include <vector>

namespace veldrin::lisp {

struct ObjectCell : Cell {
    explicit ObjectCell(Kind kind) : Cell{0, static_cast<std::uint32_t>(kind)} {
        Heap::instance().countObject();
    }
    ObjectCell(const ObjectCell&) = delete;
    ObjectCell& operator=(const ObjectCell&) = delete;
    ~ObjectCell() { Heap::instance().discountObject(); }

    ObjectCell* nextDead = nullptr; // while it waits for its end
};

class Compiler;

// How a form with its own evaluation becomes a node.
using FormCompiler = NodePtr (*)(Compiler&, const Value& form);

struct BuiltinCell : ObjectCell {
    BuiltinCell() : ObjectCell(Kind::Builtin) {}
    std::string name;
    int minArgs = 0;
    int maxArgs = anyNumber;
    BuiltinFunction function = nullptr;
    FormCompiler compile = nullptr; // a special form when set
    Value (*special)(Engine&, const Value&) = nullptr;

    bool isSpecial() const { return !function; }
    bool takes(std::size_t count) const {
        return count >= static_cast<std::size_t>(minArgs) &&
               (maxArgs == anyNumber || count <= static_cast<std::size_t>(maxArgs));
    }
};

// The body is compiled when the function is called for the first time.
struct FunctionCell : ObjectCell {
    FunctionCell() : ObjectCell(Kind::Function) {}
    std::string name; // empty for a lambda
    const std::string* file = nullptr;
    std::vector<Symbol*> parameters;
    std::vector<Symbol*> locals;
    Value forms; // the body
    std::vector<NodePtr> body;
    bool isCompiled = false;
};

struct ExternalCell : ObjectCell {
    ExternalCell() : ObjectCell(Kind::External) {}
    std::string name;
    ExternalFunction function;
};

struct EnameObject : ObjectCell {
    explicit EnameObject(Ename n) : ObjectCell(Kind::Ename), name(n) {}
    Ename name;
};

struct PayloadObject : ObjectCell {
    PayloadObject(Kind kind, std::shared_ptr<Payload> p) : ObjectCell(kind), payload(std::move(p)) {}
    std::shared_ptr<Payload> payload;
};

struct CatchErrorObject : ObjectCell {
    explicit CatchErrorObject(const Error& e) : ObjectCell(Kind::CatchError), error(e) {}
    Error error;
};

inline Value ownObject(ObjectCell* fresh) {
    fresh->refs = 1;
    return Value::adopt(bits::ofPointer(bits::tagObject, static_cast<Cell*>(fresh)));
}

} // namespace veldrin::lisp
