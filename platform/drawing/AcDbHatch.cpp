#include "drawing/AcDbHatch.h"

#include "drawing/dxf_groups.h"
#include "drawing/hatch_boundary.h"
#include "runtime/AcRxMacros.h"

#include <cmath>
#include <numbers>

ACRX_DEFINE_MEMBERS(AcDbHatch, AcDbForeignEntity, "HATCH");

using veldrin::HatchPart;
using veldrin::pointOf;

namespace {

constexpr int kElevation = 10;
constexpr int kSourceCount = 97;
constexpr double kDegree = std::numbers::pi / 180.0;

// What a matrix does in the plane, if that is all it does: turn, scale evenly, move.
struct PlaneMove {
    AcGeMatrix3d matrix;
    double scale = 1.0;
    double turn = 0.0; // degrees

    AcGePoint3d point(const AcGePoint3d& p) const { return AcGePoint3d(p).transformBy(matrix); }
    AcGePoint3d vector(const AcGePoint3d& v) const {
        AcGeVector3d moved = v.asVector();
        moved.transformBy(matrix);
        return {moved.x, moved.y, moved.z};
    }
};

bool planeMoveOf(const AcGeMatrix3d& matrix, const AcGeVector3d& normal, PlaneMove& move) {
    AcGeVector3d z = AcGeVector3d::kZAxis;
    AcGeVector3d x = AcGeVector3d::kXAxis;
    z.transformBy(matrix);
    x.transformBy(matrix);
    move.scale = matrix.scaleInPlane(AcGeVector3d::kZAxis);
    if (!normal.isEqualTo(AcGeVector3d::kZAxis) || move.scale == 0.0 || matrix.det() <= 0.0) return false;
    if (!z.normal().isEqualTo(AcGeVector3d::kZAxis)) return false;
    move.matrix = matrix;
    move.turn = std::atan2(x.y, x.x) / kDegree;
    return true;
}

constexpr int kPatternPlace = 43; // and behind it Y
constexpr int kPatternStep = 45;

// A pair of reals that is a point or a vector.
bool transformPair(resbuf& group, const PlaneMove& move) {
    resbuf* const y = group.rbnext;
    const bool isPair = (group.restype == kPatternPlace || group.restype == kPatternStep) && y &&
                        y->restype == group.restype + 1;
    if (!isPair) return false;
    const AcGePoint3d before(group.resval.rreal, y->resval.rreal, 0.0);
    const AcGePoint3d after = group.restype == kPatternPlace ? move.point(before) : move.vector(before);
    group.resval.rreal = after.x;
    y->resval.rreal = after.y;
    return true;
}

void transform(resbuf& group, HatchPart part, const PlaneMove& move) {
    switch (part) {
    case HatchPart::kPoint: veldrin::setPoint(group, move.point(pointOf(group))); break;
    case HatchPart::kVector: veldrin::setPoint(group, move.vector(pointOf(group))); break;
    case HatchPart::kLength: group.resval.rreal *= move.scale; break;
    case HatchPart::kAngle: group.resval.rreal += move.turn; break;
    case HatchPart::kClockwiseAngle: group.resval.rreal -= move.turn; break;
    case HatchPart::kOther: break;
    }
}

} // namespace

AcDbHatch::AcDbHatch() : AcDbForeignEntity("HATCH") {}
AcDbHatch::~AcDbHatch() = default;

// Only the elevation is a point in space.
bool AcDbHatch::isFlat(const resbuf& group, int) const {
    for (const resbuf* first = groups(); first; first = first->rbnext)
        if (first->restype == kElevation) return &group != first && group.restype != AcDb::kDxfNormalX;
    return false;
}

// The entities that the area was made from are not known here.
void AcDbHatch::groupsChanged() {
    for (resbuf* group = mutableGroups(); group; group = group->rbnext)
        if (group->restype == kSourceCount) group->resval.rlong = 0;
}

std::vector<AcDbForeignEntity::Outline> AcDbHatch::outlines() const {
    AcGePoint3d elevation;
    pointGroup(kElevation, elevation);
    const AcGeVector3d normal = normalGroup();
    std::vector<Outline> outlines;
    for (std::vector<AcGePoint2d>& loop : veldrin::hatchLoops(groups())) {
        Outline outline;
        for (const AcGePoint2d& p : loop)
            outline.points.push_back(veldrin::planeToWorld({p.x, p.y, elevation.z}, normal));
        if (outline.points.size() > 1) outlines.push_back(std::move(outline));
    }
    return outlines;
}

Acad::ErrorStatus AcDbHatch::subTransformBy(const AcGeMatrix3d& matrix) {
    PlaneMove move;
    if (matrix.isSingular()) return Acad::eInvalidInput;
    if (!planeMoveOf(matrix, normalGroup(), move)) return Acad::eNotApplicable;
    AcGePoint3d elevation;
    pointGroup(kElevation, elevation);
    veldrin::HatchWalk walk;
    bool isFirst = true;
    for (resbuf* group = mutableGroups(); group; group = group->rbnext) {
        if (group->restype == kElevation && isFirst) {
            isFirst = false;
            veldrin::setPoint(*group, {0.0, 0.0, move.point({0.0, 0.0, elevation.z}).z});
            continue;
        }
        const HatchPart part = walk.next(*group);
        if (!transformPair(*group, move)) transform(*group, part, move);
    }
    return Acad::eOk;
}
