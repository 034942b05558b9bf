#pragma once

#include "drawing/AcDbDatabase.h"
#include "drawing/DatabaseRegistry.h"
#include "editor/CommandLine.h"
#include "editor/DocumentManager.h"
#include "host/acrxEntryPoint.h"
#include "runtime/Host.h"
#include "scripting/Scripting.h"

#include <sanitizer/lsan_interface.h>

// A silent host with the module's classes and one empty drawing, for as long as the process lives.
class HostWithModule {
public:
    static HostWithModule& instance() {
        // Lisp's values are tagged pointers, which the search for leaks does not follow.
        static HostWithModule* const one = [] {
            const __lsan::ScopedDisabler noSearch;
            return new HostWithModule; // until the process ends
        }();
        return *one;
    }

    AcDbDatabase& drawing() { return *m_host.databases().working(); }

private:
    HostWithModule() {
        m_host.commandLine().setSink([](std::string_view) {});
        veldrin::scripting::install(m_host);
        acrxEntryPoint(AcRx::kInitAppMsg, nullptr);
        m_host.documents().newDocument();
        acrxEntryPoint(AcRx::kLoadDwgMsg, nullptr);
    }

    veldrin::Host m_host;
};
