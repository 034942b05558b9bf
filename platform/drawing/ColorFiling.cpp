#include "drawing/ColorFiling.h"

namespace veldrin {

Acad::ErrorStatus writeColor(AcDbDwgFiler& filer, const AcCmColor& color) {
    filer.writeInt16(color.colorIndex());
    filer.writeBool(color.isByColor());
    if (color.isByColor()) filer.writeInt32(static_cast<Adesk::Int32>(color.rgb()));
    return filer.filerStatus();
}

Acad::ErrorStatus readColor(AcDbDwgFiler& filer, AcCmColor& color) {
    Adesk::Int16 index = 0;
    Adesk::Int32 rgb = 0;
    bool hasRgb = false;
    filer.readInt16(index);
    if (filer.readBool(hasRgb) == Acad::eOk && hasRgb) filer.readInt32(rgb);
    if (filer.filerStatus() != Acad::eOk) return filer.filerStatus();
    color.setColorIndex(index);
    if (hasRgb) color.setRGB(static_cast<std::uint32_t>(rgb), index);
    return Acad::eOk;
}

} // namespace veldrin
