#include "drawing/AcDbLine.h"

#include "drawing/AcDbDwgFiler.h"
#include "drawing/dxf_groups.h"
#include "drawing/list_lines.h"
#include "runtime/AcRxMacros.h"

#include <cstring>

using veldrin::CurvePath;
using veldrin::CurvePiece;

ACRX_DEFINE_MEMBERS(AcDbLine, AcDbCurve, "LINE");

AcDbLine::AcDbLine() = default;
AcDbLine::AcDbLine(const AcGePoint3d& start, const AcGePoint3d& end) : m_start(start), m_end(end) {}
AcDbLine::~AcDbLine() = default;

Acad::ErrorStatus AcDbLine::setStartPoint(const AcGePoint3d& point) {
    assertWriteEnabled();
    m_start = point;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::setEndPoint(const AcGePoint3d& point) {
    assertWriteEnabled();
    m_end = point;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::setNormal(const AcGeVector3d& normal) {
    if (normal.isZeroLength()) return Acad::eInvalidInput;
    assertWriteEnabled();
    keepNormal(normal.normal());
    return Acad::eOk;
}

void AcDbLine::keepNormal(const AcGeVector3d& normal) {
    const bool isUsual = std::memcmp(&normal, &AcGeVector3d::kZAxis, sizeof normal) == 0; // to the bit
    m_normal = isUsual ? nullptr : std::make_unique<AcGeVector3d>(normal);
}

std::optional<CurvePath> AcDbLine::path() const {
    return CurvePath({CurvePiece::line(m_start, m_end)}, false);
}

double AcDbLine::paramOf(double position) const {
    return position * m_start.distanceTo(m_end);
}

double AcDbLine::positionOf(double param) const {
    const double length = m_start.distanceTo(m_end);
    return length == 0.0 ? param : param / length;
}

Acad::ErrorStatus AcDbLine::extend(double newParam) {
    const double length = m_start.distanceTo(m_end);
    if (length == 0.0) return Acad::eDegenerateGeometry;
    if (newParam >= 0.0 && newParam <= length) return Acad::eInvalidInput;
    const AcGePoint3d to = m_start + (m_end - m_start) * (newParam / length);
    return newParam < 0.0 ? setStartPoint(to) : setEndPoint(to);
}

Acad::ErrorStatus AcDbLine::extend(bool extendStart, const AcGePoint3d& toPoint) {
    const CurvePiece piece = CurvePiece::line(m_start, m_end);
    const double at = piece.closest(toPoint, true, true);
    if (extendStart ? at > 0.0 : at < 1.0) return Acad::eInvalidInput;
    return extendStart ? setStartPoint(piece.pointAt(at)) : setEndPoint(piece.pointAt(at));
}

Acad::ErrorStatus AcDbLine::dwgOutFields(AcDbDwgFiler* filer) const {
    const Acad::ErrorStatus status = AcDbCurve::dwgOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writePoint3d(m_start);
    filer->writePoint3d(m_end);
    filer->writeVector3d(normal());
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbLine::dwgInFields(AcDbDwgFiler* filer) {
    const Acad::ErrorStatus status = AcDbCurve::dwgInFields(filer);
    if (status != Acad::eOk) return status;
    filer->readPoint3d(m_start);
    filer->readPoint3d(m_end);
    AcGeVector3d read;
    if (filer->readVector3d(read) == Acad::eOk) keepNormal(read);
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbLine::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbCurve::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeItem(AcDb::kDxfSubclass, "AcDbLine");
    filer->writePoint3d(10, m_start);
    filer->writePoint3d(11, m_end);
    veldrin::writeNormal(*filer, normal());
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbLine::dxfInFields(AcDbDxfFiler* filer) {
    const Acad::ErrorStatus status = AcDbCurve::dxfInFields(filer);
    if (status != Acad::eOk) return status;
    return dxfInGroups(filer, [this](const AcDbDxfItem& item) {
        switch (item.code) {
        case 10: m_start = item.point; return true;
        case 11: m_end = item.point; return true;
        case AcDb::kDxfNormalX: keepNormal(veldrin::normalOf(item)); return true;
        default: return false;
        }
    });
}

bool AcDbLine::subWorldDraw(AcGiWorldDraw* draw) {
    const AcGePoint3d ends[2] = {m_start, m_end};
    draw->geometry().polyline(2, ends);
    return true;
}

void AcDbLine::subList() const {
    AcDbCurve::subList();
    veldrin::listPoint(*this, "from point", m_start);
    veldrin::listPoint(*this, "to point", m_end);
    const AcGeVector3d along = m_end - m_start;
    veldrin::listValue("Length =", veldrin::listedLength(*this, along.length()));
    veldrin::listValue("Angle in XY Plane =", veldrin::listedAngle(along.convert2d().angle()));
    veldrin::listPoint(*this, "Delta", {along.x, along.y, along.z});
}

Acad::ErrorStatus AcDbLine::subTransformBy(const AcGeMatrix3d& matrix) {
    if (matrix.isSingular()) return Acad::eInvalidInput;
    m_start.transformBy(matrix);
    m_end.transformBy(matrix);
    AcGeVector3d turned = normal();
    turned.transformBy(matrix).normalize();
    keepNormal(turned);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::subGetGripPoints(AcGePoint3dArray& points, AcGeIntArray&, AcGeIntArray&) const {
    points.push_back(m_start);
    points.push_back(m_end);
    points.push_back(m_start + (m_end - m_start) * 0.5);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::subMoveGripPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) {
    bool moveStart = false;
    bool moveEnd = false;
    for (const int index : indices) {
        moveStart = moveStart || index == 0 || index == 2;
        moveEnd = moveEnd || index == 1 || index == 2;
    }
    if (moveStart) m_start += offset;
    if (moveEnd) m_end += offset;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::subGetStretchPoints(AcGePoint3dArray& points) const {
    points.push_back(m_start);
    points.push_back(m_end);
    return Acad::eOk;
}
