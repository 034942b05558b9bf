#include "drawing/AcDb3dPolyline.h"

#include "drawing/AcDbDxfFiler.h"
#include "runtime/AcRxMacros.h"

// Files give it the name of the flat one, which is made by that name.
ACRX_DEFINE_MEMBERS(AcDb3dPolyline, AcDbForeignEntity, "");

using veldrin::pointOf;

namespace {

constexpr int kPoint = 10; // the first one is of no meaning, as in the flat one
constexpr int kFlags = 70;
constexpr int kClosed = 1;
constexpr int kFrame = 16;

// The first group of the vertices; null without any.
const resbuf* firstVertex(const resbuf* groups) {
    int points = 0;
    for (; groups; groups = groups->rbnext)
        if (groups->restype == kPoint && ++points == 2) return groups;
    return nullptr;
}

} // namespace

AcDb3dPolyline::AcDb3dPolyline() : AcDbForeignEntity("POLYLINE") {}
AcDb3dPolyline::~AcDb3dPolyline() = default;

std::vector<AcDb3dPolyline::Vertex> AcDb3dPolyline::vertices() const {
    std::vector<Vertex> vertices;
    for (const resbuf* group = firstVertex(groups()); group; group = group->rbnext) {
        if (group->restype == kPoint) vertices.push_back({pointOf(*group), 0});
        if (group->restype == kFlags && !vertices.empty()) vertices.back().flags = group->resval.rint;
    }
    return vertices;
}

Acad::ErrorStatus AcDb3dPolyline::setVertices(const std::vector<Vertex>& vertices) {
    assertWriteEnabled();
    veldrin::ResbufBuilder chain;
    const resbuf* const end = firstVertex(groups());
    bool hasPoint = false;
    for (const resbuf* group = groups(); group && group != end; group = group->rbnext) {
        hasPoint = hasPoint || group->restype == kPoint;
        chain.addCopy(*group);
    }
    if (!hasPoint) chain.addPoint(kPoint, 0.0, 0.0, 0.0);
    for (const Vertex& vertex : vertices) {
        chain.addPoint(kPoint, vertex.point.x, vertex.point.y, vertex.point.z);
        chain.addInteger(kFlags, vertex.flags);
    }
    setGroups(chain.take());
    return Acad::eOk;
}

// The frame of a spline is not shown.
std::vector<AcDbForeignEntity::Outline> AcDb3dPolyline::outlines() const {
    Outline outline;
    for (const Vertex& vertex : vertices())
        if ((vertex.flags & kFrame) == 0) outline.points.push_back(vertex.point);
    if (outline.points.empty()) return {};
    if ((integerGroup(kFlags) & kClosed) != 0) outline.points.push_back(outline.points.front());
    return {outline};
}

bool AcDb3dPolyline::isOwnGroup(const resbuf& group, const AcDbDxfFiler& filer) const {
    return filer.isEntityList() || &group != firstVertex(groups());
}

AcDbForeignEntity::Markers AcDb3dPolyline::markersFor(const resbuf*) const {
    return {{"AcDb3dPolyline"}, {}, {}, {}};
}

Acad::ErrorStatus AcDb3dPolyline::subTransformBy(const AcGeMatrix3d& matrix) {
    if (matrix.isSingular()) return Acad::eInvalidInput;
    std::vector<Vertex> moved = vertices();
    for (Vertex& vertex : moved) vertex.point.transformBy(matrix);
    return setVertices(moved);
}
