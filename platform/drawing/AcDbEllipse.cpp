#include "drawing/AcDbEllipse.h"

#include "drawing/AcDbDwgFiler.h"
#include "drawing/dxf_groups.h"
#include "drawing/list_lines.h"
#include "runtime/AcRxMacros.h"

#include <algorithm>
#include <cmath>
#include <numbers>

ACRX_DEFINE_MEMBERS(AcDbEllipse, AcDbCurve, "ELLIPSE");

namespace {

constexpr double kTurn = 2.0 * std::numbers::pi;
constexpr double kWhole = 1.0e-9; // a sweep that much short of a turn is one
constexpr int kPiecesPerTurn = 360;

} // namespace

AcDbEllipse::AcDbEllipse() : m_end(kTurn) {}
AcDbEllipse::AcDbEllipse(const AcGePoint3d& center, const AcGeVector3d& normal, const AcGeVector3d& majorAxis,
                         double radiusRatio, double startParam, double endParam)
    : m_center(center)
    , m_normal(normal.normal())
    , m_major(majorAxis)
    , m_ratio(radiusRatio)
    , m_start(startParam)
    , m_end(endParam) {}
AcDbEllipse::~AcDbEllipse() = default;

double AcDbEllipse::sweep() const {
    double sweep = std::fmod(m_end - m_start, kTurn);
    if (!std::isfinite(sweep)) return kTurn;
    if (sweep <= kWhole) sweep += kTurn;
    return std::min(sweep, kTurn);
}

bool AcDbEllipse::isClosed() const {
    return sweep() >= kTurn - kWhole;
}

AcGePoint3dArray AcDbEllipse::points() const {
    const double angle = sweep();
    const int count = std::max(2, static_cast<int>(std::ceil(angle / kTurn * kPiecesPerTurn)));
    const AcGeVector3d minor = minorAxis();
    AcGePoint3dArray points;
    for (int i = 0; i <= count; ++i) {
        const double param = m_start + angle * i / count;
        points.push_back(m_center + m_major * std::cos(param) + minor * std::sin(param));
    }
    if (isClosed()) points.back() = points.front();
    return points;
}

std::optional<veldrin::CurvePath> AcDbEllipse::path() const {
    const AcGePoint3dArray joints = points();
    std::vector<veldrin::CurvePiece> pieces;
    for (std::size_t i = 1; i < joints.size(); ++i)
        pieces.push_back(veldrin::CurvePiece::line(joints[i - 1], joints[i]));
    return veldrin::CurvePath(std::move(pieces), isClosed());
}

Acad::ErrorStatus AcDbEllipse::dwgOutFields(AcDbDwgFiler* filer) const {
    const Acad::ErrorStatus status = AcDbCurve::dwgOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writePoint3d(m_center);
    filer->writeVector3d(m_normal);
    filer->writeVector3d(m_major);
    filer->writeDouble(m_ratio);
    filer->writeDouble(m_start);
    return filer->writeDouble(m_end);
}

Acad::ErrorStatus AcDbEllipse::dwgInFields(AcDbDwgFiler* filer) {
    const Acad::ErrorStatus status = AcDbCurve::dwgInFields(filer);
    if (status != Acad::eOk) return status;
    filer->readPoint3d(m_center);
    filer->readVector3d(m_normal);
    filer->readVector3d(m_major);
    filer->readDouble(m_ratio);
    filer->readDouble(m_start);
    return filer->readDouble(m_end);
}

// Parameters are radians in files too.
Acad::ErrorStatus AcDbEllipse::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbCurve::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeItem(AcDb::kDxfSubclass, "AcDbEllipse");
    filer->writePoint3d(10, m_center);
    filer->writeVector3d(11, m_major);
    veldrin::writeNormal(*filer, m_normal);
    filer->writeDouble(40, m_ratio);
    filer->writeDouble(41, m_start);
    filer->writeDouble(42, m_end);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbEllipse::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbCurve::dxfInFields(filer);
    if (status != Acad::eOk) return status;
    const Acad::ErrorStatus read = dxfInGroups(filer, [this](const AcDbDxfItem& item) {
        switch (item.code) {
        case 10: m_center = item.point; return true;
        case 11: m_major = item.point.asVector(); return true;
        case 40: m_ratio = veldrin::realOf(item); return true;
        case 41: m_start = veldrin::realOf(item); return true;
        case 42: m_end = veldrin::realOf(item); return true;
        case AcDb::kDxfNormalX: m_normal = veldrin::normalOf(item); return true;
        default: return false;
        }
    });
    return read == Acad::eOk && m_major.isZeroLength() ? Acad::eInvalidInput : read;
}

bool AcDbEllipse::subWorldDraw(AcGiWorldDraw* draw) {
    const AcGePoint3dArray joints = points();
    draw->geometry().polyline(static_cast<Adesk::UInt32>(joints.size()), joints.data());
    return true;
}

void AcDbEllipse::subList() const {
    AcDbCurve::subList();
    veldrin::listPoint(*this, "center point", m_center);
    veldrin::listPoint(*this, "major axis", m_center + m_major);
    veldrin::listValue("radius ratio", veldrin::listedLength(*this, m_ratio));
}

// The axes of what an ellipse becomes are found from a pair of half diameters that belong together (Rytz); a
// matrix that turns and scales evenly keeps them.
Acad::ErrorStatus AcDbEllipse::subTransformBy(const AcGeMatrix3d& matrix) {
    if (matrix.isSingular()) return Acad::eInvalidInput;
    AcGeVector3d p = m_major;
    AcGeVector3d q = minorAxis();
    m_center.transformBy(matrix);
    p.transformBy(matrix);
    q.transformBy(matrix);
    const AcGeVector3d normal = p.crossProduct(q);
    if (normal.isZeroLength()) return Acad::eInvalidInput;
    // Of all points center + p cos t + q sin t the farthest has tan 2t = 2 p.q / (p.p - q.q).
    const double skew = 2.0 * p.dotProduct(q);
    const double difference = p.dotProduct(p) - q.dotProduct(q);
    const bool isSquare = std::abs(skew) <= 1e-12 * (p.dotProduct(p) + q.dotProduct(q));
    const double t =
        isSquare ? (difference < 0.0 ? std::numbers::pi / 2.0 : 0.0) : std::atan2(skew, difference) / 2.0;
    const bool swaps = isSquare && difference < 0.0;
    const AcGeVector3d major = swaps ? q : p * std::cos(t) + q * std::sin(t);
    const AcGeVector3d minor = swaps ? p * -1.0 : q * std::cos(t) - p * std::sin(t);
    m_normal = normal.normal();
    m_major = major;
    m_ratio = minor.length() / major.length();
    m_start -= t;
    m_end -= t;
    return Acad::eOk;
}
