#pragma once

#include "editor/DocumentManager.h"
#include "geometry/AcGePoint3d.h"
#include "host/acrxEntryPoint.h"
#include "runtime/Host.h"
#include "scripting/Scripting.h"

#include <cmath>

// A host with the module's functions, and a drawing to work in.
struct BenchSession {
    BenchSession() {
        veldrin::scripting::install(host);
        acrxEntryPoint(AcRx::kInitAppMsg, nullptr);
        host.documents().newDocument();
        acrxEntryPoint(AcRx::kLoadDwgMsg, nullptr);
    }
    ~BenchSession() { acrxEntryPoint(AcRx::kUnloadAppMsg, nullptr); }
    BenchSession(const BenchSession&) = delete;
    BenchSession& operator=(const BenchSession&) = delete;

    veldrin::Host host;
};

// Pipes of one length on a grid, in every direction.
inline AcGePoint3d benchStart(int i) {
    return {(i % 300) * 40.0, (i / 300) * 40.0, 96.0};
}
inline AcGePoint3d benchEnd(int i, double length) {
    const AcGePoint3d start = benchStart(i);
    const double angle = 0.001 * i;
    return {start.x + length * std::cos(angle), start.y + length * std::sin(angle), start.z};
}
