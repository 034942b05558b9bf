#include "drawing/AcDbArc.h"

#include "drawing/AcDbDwgFiler.h"
#include "drawing/dxf_groups.h"
#include "drawing/list_lines.h"
#include "geometry/angles.h"
#include "runtime/AcRxMacros.h"

#include <numbers>

using veldrin::CurvePath;
using veldrin::CurvePiece;
using veldrin::withinTurn;

namespace {

constexpr double kFullTurn = 2.0 * std::numbers::pi;

} // namespace

ACRX_DEFINE_MEMBERS(AcDbArc, AcDbCurve, "ARC");

AcDbArc::AcDbArc() = default;
AcDbArc::~AcDbArc() = default;

AcDbArc::AcDbArc(const AcGePoint3d& center, double radius, double startAngle, double endAngle)
    : AcDbArc(center, AcGeVector3d::kZAxis, radius, startAngle, endAngle) {}

AcDbArc::AcDbArc(const AcGePoint3d& center, const AcGeVector3d& normal, double radius, double startAngle,
                 double endAngle)
    : m_center(center)
    , m_radius(radius)
    , m_startAngle(withinTurn(startAngle))
    , m_endAngle(withinTurn(endAngle))
    , m_normal(normal.normal()) {}

Acad::ErrorStatus AcDbArc::setCenter(const AcGePoint3d& center) {
    assertWriteEnabled();
    m_center = center;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbArc::setRadius(double radius) {
    if (!(radius > 0.0)) return Acad::eInvalidInput;
    assertWriteEnabled();
    m_radius = radius;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbArc::setStartAngle(double angle) {
    assertWriteEnabled();
    m_startAngle = withinTurn(angle);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbArc::setEndAngle(double angle) {
    assertWriteEnabled();
    m_endAngle = withinTurn(angle);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbArc::setNormal(const AcGeVector3d& normal) {
    if (normal.isZeroLength()) return Acad::eInvalidInput;
    assertWriteEnabled();
    m_normal = normal.normal();
    return Acad::eOk;
}

double AcDbArc::sweep() const {
    const double turn = m_endAngle - m_startAngle;
    return turn > 0.0 ? turn : turn + kFullTurn;
}

double AcDbArc::length() const {
    return m_radius * sweep();
}

std::optional<CurvePath> AcDbArc::path() const {
    if (!(m_radius > 0.0)) return CurvePath();
    const AcGeVector3d x = m_normal.perpVector();
    const AcGeVector3d y = m_normal.crossProduct(x);
    const AcGeVector3d toStart = x * std::cos(m_startAngle) + y * std::sin(m_startAngle);
    return CurvePath({CurvePiece::arc(m_center, m_radius, m_normal, toStart, sweep())}, false);
}

double AcDbArc::paramOf(double position) const {
    return m_startAngle + position * sweep();
}
double AcDbArc::positionOf(double param) const {
    return (param - m_startAngle) / sweep();
}

Acad::ErrorStatus AcDbArc::extend(double newParam) {
    const double before = m_startAngle - newParam;
    const double behind = newParam - (m_startAngle + sweep());
    const double added = std::max(before, behind);
    if (!(added > 0.0) || added + sweep() >= kFullTurn) return Acad::eInvalidInput;
    return before > 0.0 ? setStartAngle(newParam) : setEndAngle(newParam);
}

Acad::ErrorStatus AcDbArc::extend(bool extendStart, const AcGePoint3d& toPoint) {
    const auto curve = path();
    if (curve->isEmpty()) return Acad::eDegenerateGeometry;
    const double at = curve->pieces().front().closest(toPoint, extendStart, !extendStart);
    if (extendStart ? at >= 0.0 : at <= 1.0) return Acad::eInvalidInput;
    return extend(paramOf(at));
}

Acad::ErrorStatus AcDbArc::dwgOutFields(AcDbDwgFiler* filer) const {
    const Acad::ErrorStatus status = AcDbCurve::dwgOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writePoint3d(m_center);
    filer->writeDouble(m_radius);
    filer->writeVector3d(m_normal);
    filer->writeDouble(m_startAngle);
    filer->writeDouble(m_endAngle);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbArc::dwgInFields(AcDbDwgFiler* filer) {
    const Acad::ErrorStatus status = AcDbCurve::dwgInFields(filer);
    if (status != Acad::eOk) return status;
    filer->readPoint3d(m_center);
    filer->readDouble(m_radius);
    filer->readVector3d(m_normal);
    filer->readDouble(m_startAngle);
    filer->readDouble(m_endAngle);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbArc::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbCurve::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    const double unit = veldrin::angleUnit(*filer);
    filer->writeItem(AcDb::kDxfSubclass, "AcDbCircle");
    filer->writePoint3d(10, veldrin::worldToPlane(m_center, m_normal));
    filer->writeDouble(40, m_radius);
    veldrin::writeNormal(*filer, m_normal);
    filer->writeItem(AcDb::kDxfSubclass, "AcDbArc");
    filer->writeDouble(50, m_startAngle / unit);
    filer->writeDouble(51, m_endAngle / unit);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbArc::dxfInFields(AcDbDxfFiler* filer) {
    Acad::ErrorStatus status = AcDbCurve::dxfInFields(filer);
    if (status != Acad::eOk) return status;
    const double unit = veldrin::angleUnit(*filer);
    AcGePoint3d center = veldrin::worldToPlane(m_center, m_normal);
    status = dxfInGroups(filer, [&](const AcDbDxfItem& item) {
        switch (item.code) {
        case 10: center = item.point; return true;
        case 40: m_radius = veldrin::realOf(item); return true;
        case 50: m_startAngle = withinTurn(veldrin::realOf(item) * unit); return true;
        case 51: m_endAngle = withinTurn(veldrin::realOf(item) * unit); return true;
        case AcDb::kDxfNormalX: m_normal = veldrin::normalOf(item); return true;
        default: return false;
        }
    });
    m_center = veldrin::planeToWorld(center, m_normal);
    return status == Acad::eOk && !(m_radius > 0.0) ? Acad::eDegenerateGeometry : status;
}

bool AcDbArc::subWorldDraw(AcGiWorldDraw* draw) {
    const AcGeVector3d x = m_normal.perpVector();
    const AcGeVector3d y = m_normal.crossProduct(x);
    draw->geometry().circularArc(m_center, m_radius, m_normal,
                                 x * std::cos(m_startAngle) + y * std::sin(m_startAngle), sweep());
    return true;
}

void AcDbArc::subList() const {
    AcDbCurve::subList();
    veldrin::listPoint(*this, "center point", m_center);
    veldrin::listValue("radius", veldrin::listedLength(*this, m_radius));
    veldrin::listValue("start angle", veldrin::listedAngle(m_startAngle));
    veldrin::listValue("end angle", veldrin::listedAngle(m_endAngle));
    veldrin::listValue("length", veldrin::listedLength(*this, length()));
}

Acad::ErrorStatus AcDbArc::subTransformBy(const AcGeMatrix3d& matrix) {
    if (matrix.isSingular()) return Acad::eInvalidInput;
    const double scale = matrix.scaleInPlane(m_normal);
    if (scale == 0.0) return Acad::eCannotScaleNonUniformly;
    const AcGeVector3d x = m_normal.perpVector();
    const AcGeVector3d y = m_normal.crossProduct(x);
    // A mirrored arc runs from what was its end.
    const double turn = sweep();
    const double first = matrix.det() < 0.0 ? m_endAngle : m_startAngle;
    AcGeVector3d toStart = x * std::cos(first) + y * std::sin(first);
    toStart.transformBy(matrix).normalize();
    m_center.transformBy(matrix);
    m_radius *= scale;
    m_normal.transformBy(matrix).normalize();
    const AcGeVector3d newX = m_normal.perpVector();
    const double angle =
        std::atan2(toStart.dotProduct(m_normal.crossProduct(newX)), toStart.dotProduct(newX));
    m_startAngle = withinTurn(angle);
    m_endAngle = withinTurn(angle + turn);
    return Acad::eOk;
}
