#include "pipe/PlumbPipe.h"

#include "host/ClassRegistration.h"
#include "pipe/PipeBreaks.h"
#include "runtime/CException.h"

#include <algorithm>

namespace plumb {

namespace {
constexpr const char* kClassName = "PlumbPipe";
ClassRegistration registration;

BreakSlots& slotsAt(auto& elements, Adesk::Int32 index) {
    if (index < 0 || static_cast<std::size_t>(index) >= elements.size()) AfxThrowInvalidArgException();
    return elements[static_cast<std::size_t>(index)].breaks;
}
} // namespace

void PlumbPipe::rxInit() {
    AcRxClass::Traits traits;
    traits.name = kClassName;
    traits.parentName = "AcDbCurve";
    traits.dwgVersion = 1;
    traits.maintVersion = 1;
    traits.proxyFlags = 1;
    traits.factory = []() -> AcRxObject* { return new PlumbPipe; };
    traits.dxfName = "VQPLUMBPIPE";
    traits.appName = "\"Plumbing Pipe|Veldrin Software|https://veldrin.example\"";
    registration.add(traits);
}

void PlumbPipe::unregister() {
    registration.remove();
}
AcRxClass* PlumbPipe::desc() {
    return registration.descriptor(kClassName);
}
AcRxClass* PlumbPipe::isA() const {
    return desc();
}

PlumbPipe::PlumbPipe() {
    m_mtext.setWidth(0.0);
}
PlumbPipe::~PlumbPipe() = default;

Acad::ErrorStatus PlumbPipe::audit(AcDbAuditInfo*) {
    assertReadEnabled();
    return Acad::eOk;
}

namespace {
void place(AcGePoint3d& stored, const AcGePoint3d& point, bool withZ) {
    stored.set(point.x, point.y, withZ ? point.z : stored.z);
}
} // namespace

void PlumbPipe::setStart(const AcGePoint3d& point, bool withZ) {
    place(edit().ptStart, point, withZ);
    recordGraphicsModified();
}

void PlumbPipe::setEnd(const AcGePoint3d& point, bool withZ) {
    place(edit().ptEnd, point, withZ);
    recordGraphicsModified();
}

void PlumbPipe::setIxPipe(Adesk::Int32 ixPipe) {
    edit().ixPipe = ixPipe;
    recordGraphicsModified();
}

void PlumbPipe::setBreakWidth(double width) {
    edit().dBreakWidth = width;
}
void PlumbPipe::setVerticalRadius(double radius) {
    edit().dVerticalRadius = radius;
}

void PlumbPipe::setTextStyle(AcDbObjectId style) {
    edit().textStyleId = style;
    m_mtext.setTextStyle(style);
}

void PlumbPipe::addPipeBreak(double position) {
    insertBreak(edit().pipeBreaks, position);
}
void PlumbPipe::addPtrapLine1Break(double position) {
    insertBreak(edit().ptrapLine1Breaks, position);
}
void PlumbPipe::addPtrapPolylineBreak(double position) {
    insertBreak(edit().ptrapPolylineBreaks, position);
}
void PlumbPipe::addPtrapLine2Break(double position) {
    insertBreak(edit().ptrapLine2Breaks, position);
}

void PlumbPipe::addElbow(const elbowInfo& elbow) {
    edit().elbows.push_back(elbow);
}
void PlumbPipe::addArc(const arcInfo& arc) {
    edit().arcs.push_back(arc);
}

void PlumbPipe::addElbowBreak(Adesk::Int32 index, double position) {
    insertBreak(slotsAt(edit().elbows, index), position);
}

void PlumbPipe::addArcBreak(Adesk::Int32 index, double position) {
    insertBreak(slotsAt(edit().arcs, index), position);
}

void PlumbPipe::clearElbowBreaks() {
    for (elbowInfo& elbow : edit().elbows) elbow.breaks.fill(0.0);
}

void PlumbPipe::clearArcBreaks() {
    for (arcInfo& arc : edit().arcs) arc.breaks.fill(0.0);
}

double PlumbPipe::elbowLength() const {
    const PipeData& d = data();
    double sweep = 0.0;
    for (const arcInfo& arc : d.arcs) sweep = std::max(sweep, arc.dLength);
    double length = sweep * d.dArcRadius;
    for (const elbowInfo& elbow : d.elbows) length = std::max(length, elbow.dLength);
    return length;
}

} // namespace plumb
