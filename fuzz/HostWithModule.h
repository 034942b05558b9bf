#pragma once

#include "drawing/AcDbDatabase.h"
#include "drawing/DatabaseRegistry.h"
#include "editor/CommandLine.h"
#include "editor/DocumentManager.h"
#include "host/acrxEntryPoint.h"
#include "runtime/Host.h"
#include "scripting/Scripting.h"

// A silent host with the module's classes and one empty drawing, for as long as the process lives.
class HostWithModule {
public:
    static HostWithModule& instance() {
        static HostWithModule one;
        return one;
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
    ~HostWithModule() { acrxEntryPoint(AcRx::kUnloadAppMsg, nullptr); }

    veldrin::Host m_host;
};
