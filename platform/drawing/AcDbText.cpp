#include "drawing/AcDbText.h"

#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbTextStyleTable.h"
#include "drawing/AcGiTextLook.h"
#include "drawing/list_lines.h"
#include "geometry/angles.h"
#include "runtime/AcRxMacros.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>

ACRX_DEFINE_MEMBERS(AcDbText, AcDbEntity, "TEXT");

namespace {

constexpr double kDescent = 1.0 / 3.0; // of the deepest letters, in heights

} // namespace

AcDbText::AcDbText() = default;
AcDbText::AcDbText(const AcGePoint3d& position, const std::string& text, double height, double rotation)
    : m_position(position), m_height(height), m_rotation(veldrin::withinTurn(rotation)), m_text(text) {}
AcDbText::~AcDbText() = default;

AcGeVector3d AcDbText::direction() const {
    const AcGeVector3d x = m_normal.perpVector();
    return x * std::cos(m_rotation) + m_normal.crossProduct(x) * std::sin(m_rotation);
}

void AcDbText::setDirection(const AcGeVector3d& direction) {
    const AcGeVector3d x = m_normal.perpVector();
    const AcGeVector3d y = m_normal.crossProduct(x);
    m_rotation = veldrin::withinTurn(std::atan2(direction.dotProduct(y), direction.dotProduct(x)));
}

Acad::ErrorStatus AcDbText::setPosition(const AcGePoint3d& position) {
    assertWriteEnabled();
    m_position = position;
    adjust();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbText::setAlignmentPoint(const AcGePoint3d& point) {
    if (isDefaultAlignment()) return Acad::eNotApplicable;
    assertWriteEnabled();
    m_alignment = point;
    adjust();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbText::setModes(AcDb::TextHorzMode horizontal, AcDb::TextVertMode vertical) {
    if (horizontal < AcDb::kTextLeft || horizontal > AcDb::kTextFit) return Acad::eInvalidInput;
    if (vertical < AcDb::kTextBase || vertical > AcDb::kTextTop) return Acad::eInvalidInput;
    assertWriteEnabled();
    if (isDefaultAlignment()) m_alignment = m_position;
    m_horizontal = horizontal;
    m_vertical = vertical;
    if (isDefaultAlignment()) m_alignment = AcGePoint3d::kOrigin;
    adjust();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbText::setHeight(double height) {
    if (!(height > 0.0)) return Acad::eInvalidInput;
    assertWriteEnabled();
    m_height = height;
    adjust();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbText::setWidthFactor(double factor) {
    if (!(factor > 0.0)) return Acad::eInvalidInput;
    assertWriteEnabled();
    m_widthFactor = factor;
    adjust();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbText::setOblique(double angle) {
    assertWriteEnabled();
    m_oblique = angle;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbText::setRotation(double angle) {
    assertWriteEnabled();
    m_rotation = veldrin::withinTurn(angle);
    adjust();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbText::setNormal(const AcGeVector3d& normal) {
    if (normal.isZeroLength()) return Acad::eInvalidInput;
    assertWriteEnabled();
    m_normal = normal.normal();
    adjust();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbText::mirrorInX(bool mirrored) {
    assertWriteEnabled();
    m_backwards = mirrored;
    adjust();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbText::mirrorInY(bool mirrored) {
    assertWriteEnabled();
    m_upsideDown = mirrored;
    adjust();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbText::setTextStyle(AcDbObjectId style) {
    const AcRxClass* found = style.objectClass();
    if (found && !found->isDerivedFrom(AcDbTextStyleTableRecord::desc())) return Acad::eNotThatKindOfClass;
    assertWriteEnabled();
    m_style = style;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbText::takeStyleLook() {
    assertWriteEnabled();
    const AcDbObjectPointer<AcDbTextStyleTableRecord> style(m_style, AcDb::kForRead, true);
    if (!style) return style.openStatus();
    m_widthFactor = style->xScale();
    m_oblique = style->obliquingAngle();
    m_backwards = style->isBackwards();
    m_upsideDown = style->isUpsideDown();
    if (style->textSize() > 0.0) m_height = style->textSize();
    adjust();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbText::setTextString(const std::string& text) {
    assertWriteEnabled();
    m_text = text;
    adjust();
    return Acad::eOk;
}

void AcDbText::setDatabaseDefaults(const AcDbDatabase& database) {
    AcDbEntity::setDatabaseDefaults(database);
    if (m_style.isNull())
        m_style = database.header().textstyle.isErased() ? database.standardTextStyle()
                                                         : database.header().textstyle;
    if (m_height > 0.0) return;
    m_height = database.header().textsize;
    adjust();
}

AcGiText AcDbText::drawn(const std::string& contents) const {
    AcGiText text;
    text.location = m_position;
    text.direction = direction();
    text.normal = m_normal;
    text.height = m_height;
    text.style = m_style;
    text.contents = contents;
    text.multiline = false;
    text.widthFactor = m_widthFactor;
    text.oblique = m_oblique;
    text.backwards = m_backwards;
    text.upsideDown = m_upsideDown;
    return text;
}

// Where the alignment point lies beside the position, in the text's own directions.
void AcDbText::adjust() {
    if (isDefaultAlignment()) return;
    if (runsBetweenPoints()) return adjustBetweenPoints();
    const AcGiText text = drawn(shownText());
    const double width = veldrin::layoutOf(text).width();
    const bool isMiddle = m_horizontal == AcDb::kTextMid;
    const bool isCentered = isMiddle || m_horizontal == AcDb::kTextCenter;
    AcGePoint2d at;
    at.x = isCentered ? width / 2.0 : m_horizontal == AcDb::kTextRight ? width : 0.0;
    if (isMiddle || m_vertical == AcDb::kTextVertMid) at.y = m_height / 2.0;
    if (!isMiddle && m_vertical == AcDb::kTextTop) at.y = m_height;
    if (!isMiddle && m_vertical == AcDb::kTextBottom) at.y = -m_height * kDescent;
    m_position = m_alignment - (veldrin::placeOf(text, at) - m_position);
}

void AcDbText::adjustBetweenPoints() {
    const AcGeVector3d along = m_alignment - m_position;
    const double distance = along.length();
    if (!(distance > 0.0)) return;
    setDirection(m_backwards ? -along : along);
    AcGiText text = drawn(shownText());
    if (m_horizontal == AcDb::kTextFit) text.widthFactor = 1.0;
    text.height = m_horizontal == AcDb::kTextFit ? m_height : 1.0;
    const double width = veldrin::layoutOf(text).width();
    if (!(width > 0.0)) return;
    (m_horizontal == AcDb::kTextFit ? m_widthFactor : m_height) = distance / width;
}

bool AcDbText::subWorldDraw(AcGiWorldDraw* draw) {
    draw->geometry().text(drawn(shownText()));
    return true;
}

Acad::ErrorStatus AcDbText::subGetGeomExtents(AcDbExtents& extents) const {
    for (const AcGePoint3d& corner : veldrin::cornersOf(drawn(shownText()))) extents.addPoint(corner);
    return Acad::eOk;
}

void AcDbText::subList() const {
    AcDbEntity::subList();
    const AcDbObjectPointer<AcDbTextStyleTableRecord> style(m_style, AcDb::kForRead, true);
    veldrin::listValue("Style =", fmt::format("\"{}\"", style ? style->getName() : "Standard"));
    veldrin::listPoint(*this, isDefaultAlignment() ? "start point" : "alignment point",
                       isDefaultAlignment() ? m_position : m_alignment);
    veldrin::listValue("height", veldrin::listedLength(*this, m_height));
    veldrin::listValue("text", shownText());
    veldrin::listValue("rotation angle", veldrin::listedAngle(m_rotation));
    veldrin::listValue("width scale factor", veldrin::listedLength(*this, m_widthFactor));
    veldrin::listValue("obliquing angle", veldrin::listedAngle(m_oblique));
    if (m_backwards || m_upsideDown)
        veldrin::listValue("generation", m_backwards && m_upsideDown ? "backwards, upside down"
                                         : m_backwards               ? "backwards"
                                                                     : "upside down");
}

Acad::ErrorStatus AcDbText::subGetGripPoints(AcGePoint3dArray& points, AcGeIntArray&, AcGeIntArray&) const {
    points.push_back(m_position);
    if (!isDefaultAlignment()) points.push_back(m_alignment);
    return Acad::eOk;
}

// Between two points each end goes alone; any other text goes as a whole.
Acad::ErrorStatus AcDbText::subMoveGripPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) {
    const auto moves = [&](int grip) {
        return std::find(indices.begin(), indices.end(), grip) != indices.end();
    };
    const bool any = moves(0) || (moves(1) && !isDefaultAlignment());
    if (runsBetweenPoints() ? moves(0) : any) m_position += offset;
    if (!isDefaultAlignment() && (runsBetweenPoints() ? moves(1) : any)) m_alignment += offset;
    adjust();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbText::subGetStretchPoints(AcGePoint3dArray& points) const {
    if (isDefaultAlignment() || runsBetweenPoints()) points.push_back(m_position);
    if (!isDefaultAlignment()) points.push_back(m_alignment);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbText::subMoveStretchPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) {
    return subMoveGripPointsAt(indices, offset);
}

Acad::ErrorStatus AcDbText::subGetOsnapPoints(AcDb::OsnapMode mode, Adesk::GsMarker, const AcGePoint3d&,
                                              const AcGePoint3d&, const AcGeMatrix3d&,
                                              AcGePoint3dArray& snapPoints, AcGeIntArray&) const {
    if (mode != AcDb::kOsModeIns && mode != AcDb::kOsModeNode) return Acad::eOk;
    snapPoints.push_back(isDefaultAlignment() || runsBetweenPoints() ? m_position : m_alignment);
    return Acad::eOk;
}
