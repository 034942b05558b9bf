#include "drawing/AcGiTextLook.h"

#include "drawing/AcDbTextStyleTable.h"

#include <cmath>

namespace veldrin {

void takeStyle(AcDbObjectId style, TextLook& look) {
    if (style.isNull()) return;
    const AcDbObjectPointer<AcDbTextStyleTableRecord> record(style, AcDb::kForRead, true);
    if (!record) return;
    look.widthFactor = record->xScale();
    look.oblique = record->obliquingAngle();
}

TextLayout layoutOf(const AcGiText& text) {
    TextLook look;
    look.height = text.height;
    look.wrapWidth = text.width;
    look.attachment = text.attachment;
    look.multiline = text.multiline;
    if (text.multiline)
        takeStyle(text.style, look);
    else
        look.oblique = text.oblique;
    look.widthFactor *= text.widthFactor;
    return TextLayout(text.contents, look);
}

AcGePoint3d placeOf(const AcGiText& text, const AcGePoint2d& inLayout) {
    const AcGeVector3d up = text.normal.crossProduct(text.direction);
    return text.location + text.direction * (text.backwards ? -inLayout.x : inLayout.x) +
           up * (text.upsideDown ? -inLayout.y : inLayout.y);
}

// A letter stands in a frame of its baseline and its stem. The stem leans by the slant, against the direction
// of writing where one of both is turned.
void transformText(AcGiText& text, const AcGeMatrix3d& matrix) {
    const bool turned = text.backwards != text.upsideDown;
    const double lean = text.multiline ? 0.0 : std::tan(text.oblique) * (turned ? -1.0 : 1.0);
    AcGeVector3d along = text.direction;
    AcGeVector3d stem = text.normal.crossProduct(text.direction) + text.direction * lean;
    text.location.transformBy(matrix);
    along.transformBy(matrix);
    stem.transformBy(matrix);
    const double length = along.length();
    text.direction = along.normal();
    const double newLean = stem.dotProduct(text.direction);
    const AcGeVector3d up = stem - text.direction * newLean;
    text.normal = along.crossProduct(up).normal();
    text.height *= up.length();
    text.width *= length;
    if (up.length() == 0.0) return;
    text.widthFactor *= length / up.length();
    if (!text.multiline) text.oblique = std::atan2(turned ? -newLean : newLean, up.length());
}

std::array<AcGePoint3d, 4> cornersOf(const AcGiText& text) {
    const TextLayout layout = layoutOf(text);
    const AcGePoint2d low = layout.lowerLeft();
    const AcGePoint2d high = layout.upperRight();
    return {placeOf(text, low), placeOf(text, {high.x, low.y}), placeOf(text, high),
            placeOf(text, {low.x, high.y})};
}

} // namespace veldrin
