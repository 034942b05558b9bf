#include "drawing/AcDbMText.h"

#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbTextStyleTable.h"
#include "drawing/AcGiTextLook.h"
#include "drawing/list_lines.h"
#include "geometry/angles.h"
#include "runtime/AcRxMacros.h"

ACRX_DEFINE_MEMBERS(AcDbMText, AcDbEntity, "MTEXT");

AcDbMText::AcDbMText() = default;
AcDbMText::~AcDbMText() = default;

namespace {

// Angle of the user system's X axis in the world. The working drawing's counts, in which the user works.
double userAngle() {
    const AcDbDatabase* working = acdbHostApplicationServices()->workingDatabase();
    if (!working) return 0.0;
    return working->header().ucsXDir.convert2d().angle();
}

} // namespace

Acad::ErrorStatus AcDbMText::setLocation(const AcGePoint3d& location) {
    assertWriteEnabled();
    m_location = location;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::setDirection(const AcGeVector3d& direction) {
    if (direction.isZeroLength()) return Acad::eInvalidInput;
    assertWriteEnabled();
    m_direction = direction.normal();
    return Acad::eOk;
}

double AcDbMText::worldRotation() const {
    return m_direction.convert2d().angle();
}
double AcDbMText::rotation() const {
    return veldrin::withinTurn(worldRotation() - userAngle());
}

Acad::ErrorStatus AcDbMText::setRotation(double rotation) {
    const double angle = rotation + userAngle();
    return setDirection({std::cos(angle), std::sin(angle), 0.0});
}

Acad::ErrorStatus AcDbMText::setWidth(double width) {
    if (!(width >= 0.0)) return Acad::eInvalidInput;
    assertWriteEnabled();
    m_width = width;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::setTextHeight(double height) {
    if (!(height >= 0.0)) return Acad::eInvalidInput;
    assertWriteEnabled();
    m_height = height;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::setTextStyle(AcDbObjectId style) {
    const AcRxClass* found = style.objectClass();
    if (found && !found->isDerivedFrom(AcDbTextStyleTableRecord::desc())) return Acad::eNotThatKindOfClass;
    assertWriteEnabled();
    m_style = style;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::setAttachment(AttachmentPoint attachment) {
    if (attachment < kTopLeft || attachment > kBottomRight) return Acad::eInvalidInput;
    assertWriteEnabled();
    m_attachment = attachment;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::setContents(const std::string& contents) {
    assertWriteEnabled();
    m_contents = contents;
    return Acad::eOk;
}

const AcDbDatabase* AcDbMText::drawing() const {
    if (const AcDbDatabase* own = database()) return own;
    if (const AcDbDatabase* styles = m_style.database()) return styles;
    return acdbHostApplicationServices()->workingDatabase();
}

AcDbObjectId AcDbMText::effectiveStyle() const {
    if (!m_style.isNull()) return m_style;
    const AcDbDatabase* database = drawing();
    return database ? database->standardTextStyle() : AcDbObjectId();
}

double AcDbMText::effectiveHeight() const {
    if (m_height > 0.0) return m_height;
    const AcDbObjectPointer<AcDbTextStyleTableRecord> style(effectiveStyle(), AcDb::kForRead, true);
    if (style && style->textSize() > 0.0) return style->textSize();
    const AcDbDatabase* database = drawing();
    return database ? database->header().textsize : veldrin::HeaderVariables().textsize;
}

AcGiText AcDbMText::drawn() const {
    AcGiText text;
    text.location = m_location;
    text.direction = m_direction;
    text.normal = m_normal;
    text.height = effectiveHeight();
    text.width = m_width;
    text.attachment = m_attachment;
    text.style = effectiveStyle();
    text.contents = m_contents;
    return text;
}

veldrin::TextSize AcDbMText::actualSize() const {
    veldrin::TextLook look;
    look.height = effectiveHeight();
    look.wrapWidth = m_width;
    veldrin::takeStyle(effectiveStyle(), look);
    return veldrin::measure(m_contents, look);
}

double AcDbMText::actualWidth() const {
    return actualSize().width;
}
double AcDbMText::actualHeight(AcGiWorldDraw*) const {
    return actualSize().height;
}

bool AcDbMText::subWorldDraw(AcGiWorldDraw* draw) {
    draw->geometry().text(drawn());
    return true;
}

Acad::ErrorStatus AcDbMText::subGetGeomExtents(AcDbExtents& extents) const {
    for (const AcGePoint3d& corner : veldrin::cornersOf(drawn())) extents.addPoint(corner);
    return Acad::eOk;
}

void AcDbMText::subList() const {
    AcDbEntity::subList();
    veldrin::listPoint(*this, "Location", m_location);
    veldrin::listValue("Width:", veldrin::listedLength(*this, m_width));
    veldrin::listValue("Rotation:", veldrin::listedAngle(rotation()));
    veldrin::listValue("Text height:", veldrin::listedLength(*this, effectiveHeight()));
    veldrin::listValue("Contents:", m_contents);
}

Acad::ErrorStatus AcDbMText::subTransformBy(const AcGeMatrix3d& matrix) {
    if (matrix.isSingular()) return Acad::eInvalidInput;
    AcGeVector3d along = m_direction;
    AcGeVector3d up = m_normal.crossProduct(m_direction);
    along.transformBy(matrix);
    up.transformBy(matrix);
    m_location.transformBy(matrix);
    const AcGeVector3d facing = along.crossProduct(up).normal();
    m_normal = facing;
    if (matrix.det() < 0.0) {
        // A mirrored text covers the mirrored place but stays readable: it turns over its lines or its
        // columns, whichever leaves it closer to how it stood.
        m_normal = -facing;
        const int column = (m_attachment - 1) % 3;
        const int row = (m_attachment - 1) / 3;
        const bool turnsLines = along.dotProduct(m_direction) >= 0.0;
        if (!turnsLines) along = -along;
        m_attachment = static_cast<AttachmentPoint>(turnsLines ? 3 * (2 - row) + column + 1
                                                               : 3 * row + (2 - column) + 1);
    }
    m_width *= along.length();
    m_height *= up.length();
    m_direction = along.normal();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::subGetGripPoints(AcGePoint3dArray& points, AcGeIntArray&, AcGeIntArray&) const {
    points.push_back(m_location);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::subMoveGripPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) {
    if (std::find(indices.begin(), indices.end(), 0) != indices.end()) m_location += offset;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::subGetOsnapPoints(AcDb::OsnapMode mode, Adesk::GsMarker, const AcGePoint3d&,
                                               const AcGePoint3d&, const AcGeMatrix3d&,
                                               AcGePoint3dArray& snapPoints, AcGeIntArray&) const {
    if (mode == AcDb::kOsModeIns || mode == AcDb::kOsModeNode) snapPoints.push_back(m_location);
    return Acad::eOk;
}
