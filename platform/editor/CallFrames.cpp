#include "editor/CallFrames.h"

#include "dao/CDaoDatabase.h"
#include "editor/Activity.h"
#include "runtime/Host.h"
#include "runtime/ModuleLoader.h"
#include "runtime/resbuf.h"

#include <algorithm>

namespace veldrin {

// A call that is under way: what it works with, and what the host keeps of it.
class CallFrames::Running {
public:
    Running(std::vector<Frame>& frames, const LoadedModule* module, const std::string& name, Frame frame)
        : m_frames(frames), m_module(module), m_activity(ActivityStack::Kind::Handler, name), m_step(name) {
        m_frames.push_back(std::move(frame));
        Host::current().modules().enterCall(m_module);
    }
    ~Running() {
        Host::current().modules().leaveCall(m_module);
        m_frames.pop_back();
    }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;

    lisp::Value takeResult() { return std::move(m_frames.back().result); }

private:
    std::vector<Frame>& m_frames;
    const LoadedModule* m_module;
    ActivityScope m_activity;
    UndoStep m_step;
};

CallFrames::CallFrames(lisp::Engine& engine) : m_engine(engine) {}
CallFrames::~CallFrames() = default;

bool CallFrames::define(const LoadedModule* module, const std::string& name, int code) {
    if (name.empty()) return false;
    const Key key{module, code};
    Function& function = m_functions[key];
    if (!function.name.empty() && function.name != name) m_engine.undefineExternal(function.name);
    function.name = name;
    connect(key, function);
    return true;
}

bool CallFrames::registerHandler(const LoadedModule* module, Handler handler, int code) {
    if (!handler) return false;
    const Key key{module, code};
    Function& function = m_functions[key];
    function.handler = handler;
    connect(key, function);
    return true;
}

void CallFrames::connect(const Key& key, const Function& function) {
    if (function.name.empty() || !function.handler) return;
    m_engine.defineExternal(
        function.name, [this, key](lisp::Engine&, lisp::Args arguments) { return call(key, arguments); });
}

bool CallFrames::undefine(const LoadedModule* module, const std::string& name, int code) {
    const auto found = m_functions.find({module, code});
    if (found == m_functions.end() || found->second.name != name) return false;
    m_engine.undefineExternal(name);
    m_functions.erase(found);
    return true;
}

void CallFrames::forgetModule(const LoadedModule* module) {
    std::erase_if(m_functions, [&](const auto& entry) {
        if (entry.first.first != module) return false;
        if (!entry.second.name.empty()) m_engine.undefineExternal(entry.second.name);
        return true;
    });
}

std::vector<std::string> CallFrames::functionsOf(const LoadedModule* module) const {
    std::vector<std::string> names;
    for (const auto& [key, function] : m_functions)
        if (key.first == module && !function.name.empty()) names.push_back(function.name);
    return names;
}

lisp::Value CallFrames::call(const Key& key, lisp::Args arguments) {
    const auto found = m_functions.find(key);
    if (found == m_functions.end()) throw lisp::Error("ADS request error");
    const Function function = found->second;
    CDaoDatabase::noteTurn();
    // Made before the handler runs, so that an argument which cannot leave Lisp is an error of the call.
    lisp::ResbufChain chain = lisp::toResbufs(m_engine, arguments);
    Running running(m_frames, key.first, function.name, {arguments, std::move(chain), {}});
    bool failed = false;
    try {
        failed = function.handler() == RSERR;
    } catch (...) {
        // What a handler throws ends here: Lisp hears of a failed call.
        failed = true;
    }
    if (failed) throw lisp::Error("ADS request error");
    return running.takeResult();
}

lisp::ResbufChain CallFrames::arguments() {
    if (m_frames.empty()) return {};
    Frame& frame = m_frames.back();
    if (frame.chain) return std::move(frame.chain);
    return lisp::toResbufs(m_engine, frame.arguments);
}

bool CallFrames::setResult(lisp::Value value) {
    if (m_frames.empty()) return false;
    m_frames.back().result = std::move(value);
    return true;
}

} // namespace veldrin
