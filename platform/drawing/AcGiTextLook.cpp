#include "drawing/AcGiTextLook.h"

#include "drawing/AcDbTextStyleTable.h"

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
    return text.location + text.direction * inLayout.x + up * inLayout.y;
}

std::array<AcGePoint3d, 4> cornersOf(const AcGiText& text) {
    const TextLayout layout = layoutOf(text);
    const AcGePoint2d low = layout.lowerLeft();
    const AcGePoint2d high = layout.upperRight();
    return {placeOf(text, low), placeOf(text, {high.x, low.y}), placeOf(text, high),
            placeOf(text, {low.x, high.y})};
}

} // namespace veldrin
