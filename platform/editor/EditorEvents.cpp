#include "editor/EditorEvents.h"

#include "editor/CommandLine.h"
#include "runtime/AcRxMacros.h"
#include "runtime/Host.h"
#include "runtime/acrx.h"

#include <cstring>
#include <fmt/format.h>

ACRX_NO_CONS_DEFINE_MEMBERS(AcEditor, AcRxObject);

AcEditorReactor::~AcEditorReactor() = default;
void AcEditorReactor::beginSave(AcDbDatabase*, const char*) {}
void AcEditorReactor::saveComplete(AcDbDatabase*, const char*) {}
void AcEditorReactor::abortSave(AcDbDatabase*) {}
void AcEditorReactor::commandWillStart(const char*) {}
void AcEditorReactor::commandEnded(const char*) {}
void AcEditorReactor::commandCancelled(const char*) {}
void AcEditorReactor::commandFailed(const char*) {}
void AcEditorReactor::lispWillStart(const char*) {}
void AcEditorReactor::lispEnded() {}
void AcEditorReactor::lispCancelled() {}

namespace {

class SystemRegistry : public AcRxDictionary {
public:
    AcRxObject* at(const char* key) const override {
        if (!key || std::strcmp(key, "AcEditor") != 0 || !veldrin::Host::exists()) return nullptr;
        return &veldrin::Host::current().editorEvents();
    }
};

} // namespace

AcRxDictionary* acrxSysRegistry() {
    static SystemRegistry registry; // has no state: it asks the host
    return &registry;
}

namespace veldrin {

EditorEvents::EditorEvents() = default;
EditorEvents::~EditorEvents() = default;

void reportReactorFailure(const std::exception* failure) {
    CommandLine& line = Host::current().commandLine();
    line.freshLine();
    line.print(failure ? fmt::format("A reactor has failed: {}\n", failure->what())
                       : "A reactor has failed.\n");
}

} // namespace veldrin
