#include "drawing/AcDbPathCurve.h"

#include "drawing/AcDbArc.h"
#include "drawing/AcDbLine.h"

namespace veldrin {

namespace {

constexpr double kEndSlack = 1.0e-8; // rounding by which a distance or parameter may miss the curve's end

} // namespace

// A curve's path for one question, when it has one piece at least.
class PathCurve::UsablePath {
public:
    explicit UsablePath(const PathCurve& curve) : m_path(curve.keptPath()) {
        curve.assertReadEnabled();
        if (m_path) return;
        m_built = curve.path();
        if (m_built) m_path = &*m_built;
    }
    UsablePath(const UsablePath&) = delete;
    UsablePath& operator=(const UsablePath&) = delete;

    Acad::ErrorStatus status() const {
        return m_path && !m_path->isEmpty() ? Acad::eOk : Acad::eDegenerateGeometry;
    }
    const CurvePath& operator*() const { return *m_path; }
    const CurvePath* operator->() const { return m_path; }

private:
    std::optional<CurvePath> m_built;
    const CurvePath* m_path;
};

PathCurve::PathCurve() = default;
PathCurve::~PathCurve() = default;

double PathCurve::paramOf(double position) const {
    return position;
}
double PathCurve::positionOf(double param) const {
    return param;
}

Acad::ErrorStatus PathCurve::positionAtPoint(const CurvePath& path, const AcGePoint3d& point,
                                             double& position) const {
    position = path.closest(point);
    return path.pointAt(position).distanceTo(point) <= kOnCurve ? Acad::eOk : Acad::eInvalidInput;
}

Acad::ErrorStatus PathCurve::positionAtParam(const CurvePath& path, double param, double& position) const {
    position = positionOf(param);
    if (!(position >= -kEndSlack && position <= path.endPosition() + kEndSlack)) return Acad::eInvalidInput;
    position = std::min(std::max(position, 0.0), path.endPosition());
    return Acad::eOk;
}

Acad::ErrorStatus PathCurve::getStartParam(double& param) const {
    const UsablePath curve(*this);
    const Acad::ErrorStatus status = curve.status();
    if (status == Acad::eOk) param = paramOf(0.0);
    return status;
}

Acad::ErrorStatus PathCurve::getEndParam(double& param) const {
    const UsablePath curve(*this);
    const Acad::ErrorStatus status = curve.status();
    if (status == Acad::eOk) param = paramOf(curve->endPosition());
    return status;
}

Acad::ErrorStatus PathCurve::getStartPoint(AcGePoint3d& point) const {
    const UsablePath curve(*this);
    const Acad::ErrorStatus status = curve.status();
    if (status == Acad::eOk) point = curve->pointAt(0.0);
    return status;
}

Acad::ErrorStatus PathCurve::getEndPoint(AcGePoint3d& point) const {
    const UsablePath curve(*this);
    const Acad::ErrorStatus status = curve.status();
    if (status == Acad::eOk) point = curve->pointAt(curve->endPosition());
    return status;
}

Acad::ErrorStatus PathCurve::getPointAtParam(double param, AcGePoint3d& point) const {
    const UsablePath curve(*this);
    double position = 0.0;
    Acad::ErrorStatus status = curve.status();
    if (status == Acad::eOk) status = positionAtParam(*curve, param, position);
    if (status == Acad::eOk) point = curve->pointAt(position);
    return status;
}

Acad::ErrorStatus PathCurve::getParamAtPoint(const AcGePoint3d& point, double& param) const {
    const UsablePath curve(*this);
    double position = 0.0;
    Acad::ErrorStatus status = curve.status();
    if (status == Acad::eOk) status = positionAtPoint(*curve, point, position);
    if (status == Acad::eOk) param = paramOf(position);
    return status;
}

Acad::ErrorStatus PathCurve::getDistAtParam(double param, double& dist) const {
    const UsablePath curve(*this);
    double position = 0.0;
    Acad::ErrorStatus status = curve.status();
    if (status == Acad::eOk) status = positionAtParam(*curve, param, position);
    if (status == Acad::eOk) dist = curve->distanceAt(position);
    return status;
}

Acad::ErrorStatus PathCurve::getParamAtDist(double dist, double& param) const {
    const UsablePath curve(*this);
    const Acad::ErrorStatus status = curve.status();
    if (status != Acad::eOk) return status;
    const double length = curve->length();
    if (!(dist >= -kEndSlack && dist <= length + kEndSlack)) return Acad::eInvalidInput;
    param = paramOf(curve->positionAt(std::min(std::max(dist, 0.0), length)));
    return Acad::eOk;
}

Acad::ErrorStatus PathCurve::getDistAtPoint(const AcGePoint3d& point, double& dist) const {
    const UsablePath curve(*this);
    double position = 0.0;
    Acad::ErrorStatus status = curve.status();
    if (status == Acad::eOk) status = positionAtPoint(*curve, point, position);
    if (status == Acad::eOk) dist = curve->distanceAt(position);
    return status;
}

Acad::ErrorStatus PathCurve::getPointAtDist(double dist, AcGePoint3d& point) const {
    double param = 0.0;
    const Acad::ErrorStatus status = getParamAtDist(dist, param);
    return status == Acad::eOk ? getPointAtParam(param, point) : status;
}

Acad::ErrorStatus PathCurve::getFirstDeriv(double param, AcGeVector3d& deriv) const {
    const UsablePath curve(*this);
    double position = 0.0;
    Acad::ErrorStatus status = curve.status();
    if (status == Acad::eOk) status = positionAtParam(*curve, param, position);
    if (status != Acad::eOk) return status;
    const double paramPerPosition = paramOf(1.0) - paramOf(0.0);
    if (paramPerPosition == 0.0) return Acad::eDegenerateGeometry;
    deriv = curve->derivativeAt(position) / paramPerPosition;
    return Acad::eOk;
}

Acad::ErrorStatus PathCurve::getFirstDeriv(const AcGePoint3d& point, AcGeVector3d& deriv) const {
    double param = 0.0;
    const Acad::ErrorStatus status = getParamAtPoint(point, param);
    return status == Acad::eOk ? getFirstDeriv(param, deriv) : status;
}

Acad::ErrorStatus PathCurve::getClosestPointTo(const AcGePoint3d& given, AcGePoint3d& onCurve,
                                               bool extend) const {
    const UsablePath curve(*this);
    const Acad::ErrorStatus status = curve.status();
    if (status == Acad::eOk) onCurve = curve->pointAt(curve->closest(given, extend));
    return status;
}

Acad::ErrorStatus PathCurve::getClosestPointTo(const AcGePoint3d& given, const AcGeVector3d& direction,
                                               AcGePoint3d& onCurve, bool extend) const {
    if (direction.isZeroLength()) return Acad::eInvalidInput;
    const UsablePath curve(*this);
    const Acad::ErrorStatus status = curve.status();
    if (status == Acad::eOk) onCurve = curve->pointAt(curve->closestAlong(given, direction, extend));
    return status;
}

Acad::ErrorStatus PathCurve::subGetGeomExtents(AcDbExtents& extents) const {
    const UsablePath curve(*this);
    const Acad::ErrorStatus status = curve.status();
    if (status == Acad::eOk) curve->addTo(extents);
    return status;
}

void explodePath(const CurvePath& path, const AcDbEntity& like, std::vector<AcDbEntity*>& pieces) {
    for (const CurvePiece& piece : path.pieces()) {
        AcDbEntity* entity = nullptr;
        if (piece.isArc()) {
            // Arcs run counter-clockwise, so a clockwise piece turns round.
            const AcGeVector3d normal = piece.normal();
            const AcGeVector3d x = normal.perpVector();
            const AcGeVector3d first =
                piece.sweep > 0.0 ? piece.toStart : (piece.end - piece.center).normal();
            const double angle = std::atan2(first.dotProduct(normal.crossProduct(x)), first.dotProduct(x));
            entity = new AcDbArc(piece.center, normal, piece.radius, angle, angle + std::abs(piece.sweep));
        } else {
            entity = new AcDbLine(piece.start, piece.end);
        }
        entity->setPropertiesFrom(&like);
        pieces.push_back(entity);
    }
}

} // namespace veldrin
