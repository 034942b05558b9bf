#pragma once

#include "runtime/VeldrinApi.h"

#include <memory>

namespace veldrin::lisp {
class Engine;
}

namespace veldrin {

class DatabaseRegistry;
class DocumentManager;
class CommandLine;
class CommandRegistry;
class SystemVariables;
class ModuleLoader;
class UiBackend;
class UserSettings;
class CallFrames;
class EditorEvents;

// Everything of one running host, except the class registry, which belongs to the process. One exists at
// a time; the host's free functions are one-line doors to it. The program makes one, a test makes its own
// and drops it. It starts without a document, and without the Lisp functions of the scripting room; at its
// end documents are closed and modules unloaded.
class VELDRIN_API Host {
public:
    Host();
    ~Host();
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    // The live host. It is a fault to ask without one.
    static Host& current();
    static bool exists();

    DatabaseRegistry& databases();
    DocumentManager& documents();
    CommandLine& commandLine();  // what is printed, and who reads it
    CommandRegistry& commands(); // built-in and Lisp commands, the input source
    SystemVariables& variables();
    lisp::Engine& lisp();
    CallFrames& callFrames(); // arguments and results of C++ functions that Lisp has called
    ModuleLoader& modules();
    UiBackend& ui();
    UserSettings& settings();
    EditorEvents& editorEvents(); // those who listen to commands and saves

    // Another way to show windows, instead of the one without a display that a host starts with.
    void setUi(std::unique_ptr<UiBackend> ui);

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};

} // namespace veldrin
