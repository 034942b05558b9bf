#include "arrow/PlumbPipeArrow.h"

#include "host/ClassRegistration.h"

namespace plumb {

namespace {
constexpr const char* kClassName = "PlumbPipeArrow";
ClassRegistration registration;
} // namespace

void PlumbPipeArrow::rxInit() {
    AcRxClass::Traits traits;
    traits.name = kClassName;
    traits.parentName = "AcDbEntity";
    traits.dwgVersion = 1;
    traits.maintVersion = 1;
    traits.proxyFlags = 1;
    traits.factory = []() -> AcRxObject* { return new PlumbPipeArrow; };
    traits.dxfName = "VQPLUMBPIPEARROW";
    traits.appName = "\"Plumbing Pipe Arrow|Veldrin Software|https://veldrin.example\"";
    registration.add(traits);
}

void PlumbPipeArrow::unregister() {
    registration.remove();
}
AcRxClass* PlumbPipeArrow::desc() {
    return registration.descriptor(kClassName);
}
AcRxClass* PlumbPipeArrow::isA() const {
    return desc();
}

PlumbPipeArrow::PlumbPipeArrow() = default;
PlumbPipeArrow::~PlumbPipeArrow() = default;

Acad::ErrorStatus PlumbPipeArrow::audit(AcDbAuditInfo*) {
    assertReadEnabled();
    return Acad::eOk;
}

void PlumbPipeArrow::setStart(const AcGePoint3d& point) {
    edit().ptStart = point;
    recordGraphicsModified();
}

void PlumbPipeArrow::setEnd(const AcGePoint3d& point) {
    edit().ptEnd = point;
    recordGraphicsModified();
}

bool PlumbPipeArrow::isVerticalInPlan() const {
    return m_data.ptStart.convert2d().isEqualTo(m_data.ptEnd.convert2d());
}

Acad::ErrorStatus PlumbPipeArrow::subTransformBy(const AcGeMatrix3d& matrix) {
    assertWriteEnabled();
    AcGePoint3d newStart = m_data.ptStart;
    AcGePoint3d newEnd = m_data.ptEnd;
    setStart(newStart.transformBy(matrix));
    setEnd(newEnd.transformBy(matrix));
    return Acad::eOk;
}

Acad::ErrorStatus PlumbPipeArrow::subExplode(std::vector<AcDbEntity*>&) const {
    assertReadEnabled();
    return Acad::eNotApplicable;
}

Acad::ErrorStatus PlumbPipeArrow::subGetGeomExtents(AcDbExtents& extents) const {
    const ArrowData& d = data();
    extents.addPoint(d.ptStart);
    if (!isVerticalInPlan()) extents.addPoint(d.ptEnd);
    return Acad::eOk;
}

void PlumbPipeArrow::subList() const {
    assertReadEnabled();
    AcDbEntity::subList();
}

} // namespace plumb
