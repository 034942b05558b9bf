#pragma once

#include "lisp/Engine.h"
#include "lisp/marshal.h"
#include "runtime/VeldrinApi.h"

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace veldrin {

class LoadedModule;

// The functions of modules that Lisp can call, and the calls that are under way: each has its arguments and
// its result, and a handler may call Lisp, which calls the next handler, to any depth.
class VELDRIN_API CallFrames {
public:
    using Handler = int (*)();

    explicit CallFrames(lisp::Engine& engine);
    ~CallFrames();

    // A function is known by its module (null: the host itself) and the code that the module gave it. Name
    // and handler come in either order; Lisp can call it once both are there.
    bool define(const LoadedModule* module, const std::string& name, int code);
    bool registerHandler(const LoadedModule* module, Handler handler, int code);
    bool undefine(const LoadedModule* module, const std::string& name, int code);
    // Forgets all functions of a module that is unloaded.
    void forgetModule(const LoadedModule* module);
    // Names that a module has defined, in order.
    std::vector<std::string> functionsOf(const LoadedModule* module) const;

    int depth() const { return static_cast<int>(m_frames.size()); }
    // Of the call that runs now: a fresh chain at each call. Without one there are no arguments, and setting
    // is refused.
    lisp::ResbufChain arguments();
    bool setResult(lisp::Value value);

private:
    struct Frame {
        lisp::Args arguments;
        lisp::ResbufChain chain; // of the arguments, until it is handed out
        lisp::Value result;
    };
    class Running;
    struct Function {
        std::string name;
        Handler handler = nullptr;
    };
    using Key = std::pair<const LoadedModule*, int>;

    void connect(const Key& key, const Function& function);
    lisp::Value call(const Key& key, lisp::Args arguments);

    lisp::Engine& m_engine;
    std::map<Key, Function> m_functions;
    std::vector<Frame> m_frames;
};

} // namespace veldrin
