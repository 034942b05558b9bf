#include "drawing/AcDbTextStyleTable.h"

#include "drawing/AcDbDwgFiler.h"
#include "drawing/AcDbDxfFiler.h"
#include "drawing/dxf_groups.h"
#include "runtime/AcRxMacros.h"

#include <numbers>

ACRX_DEFINE_MEMBERS(AcDbTextStyleTableRecord, AcDbSymbolTableRecord, "STYLE");
ACRX_DEFINE_MEMBERS(AcDbTextStyleTable, AcDbSymbolTable, "");

namespace {

constexpr int kBackwards = 2;
constexpr int kUpsideDown = 4;
constexpr double kDegree = std::numbers::pi / 180.0;

} // namespace

AcDbTextStyleTableRecord::AcDbTextStyleTableRecord() = default;
AcDbTextStyleTableRecord::~AcDbTextStyleTableRecord() = default;

Acad::ErrorStatus AcDbTextStyleTableRecord::setFileName(const char* fileName) {
    assertWriteEnabled();
    m_fileName = fileName ? fileName : "";
    return Acad::eOk;
}

Acad::ErrorStatus AcDbTextStyleTableRecord::setTextSize(double size) {
    assertWriteEnabled();
    if (!(size >= 0.0)) return Acad::eInvalidInput;
    m_textSize = size;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbTextStyleTableRecord::setXScale(double scale) {
    assertWriteEnabled();
    if (!(scale > 0.0)) return Acad::eInvalidInput;
    m_xScale = scale;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbTextStyleTableRecord::setObliquingAngle(double angle) {
    constexpr double kSteepest = 85.0 * kDegree;
    assertWriteEnabled();
    if (!(angle >= -kSteepest && angle <= kSteepest)) return Acad::eInvalidInput;
    m_obliquing = angle;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbTextStyleTableRecord::setIsBackwards(bool backwards) {
    assertWriteEnabled();
    m_backwards = backwards;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbTextStyleTableRecord::setIsUpsideDown(bool upsideDown) {
    assertWriteEnabled();
    m_upsideDown = upsideDown;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbTextStyleTableRecord::dwgInFields(AcDbDwgFiler* filer) {
    const Acad::ErrorStatus status = AcDbSymbolTableRecord::dwgInFields(filer);
    if (status != Acad::eOk) return status;
    filer->readString(m_fileName);
    filer->readDouble(m_textSize);
    filer->readDouble(m_xScale);
    filer->readDouble(m_obliquing);
    filer->readBool(m_backwards);
    return filer->readBool(m_upsideDown);
}

Acad::ErrorStatus AcDbTextStyleTableRecord::dwgOutFields(AcDbDwgFiler* filer) const {
    AcDbSymbolTableRecord::dwgOutFields(filer);
    filer->writeString(m_fileName);
    filer->writeDouble(m_textSize);
    filer->writeDouble(m_xScale);
    filer->writeDouble(m_obliquing);
    filer->writeBool(m_backwards);
    return filer->writeBool(m_upsideDown);
}

Acad::ErrorStatus AcDbTextStyleTableRecord::dxfInFields(AcDbDxfFiler* filer) {
    return dxfInItems(*filer, "AcDbTextStyleTableRecord", [&](const AcDbDxfItem& item) {
        switch (item.code) {
        case 3: return setFileName(item.text.c_str());
        case 40: return setTextSize(item.real);
        case 41: return setXScale(item.real);
        case 50: return setObliquingAngle(item.real * veldrin::angleUnit(*filer));
        case 71:
            m_backwards = (item.integer & kBackwards) != 0;
            m_upsideDown = (item.integer & kUpsideDown) != 0;
            return Acad::eOk;
        default: return Acad::eOk;
        }
    });
}

Acad::ErrorStatus AcDbTextStyleTableRecord::dxfOutFields(AcDbDxfFiler* filer) const {
    constexpr double kUsualHeight = 2.5;
    AcDbObject::dxfOutFields(filer);
    dxfOutHead(*filer, "AcDbTextStyleTableRecord", 0);
    filer->writeDouble(40, m_textSize);
    filer->writeDouble(41, m_xScale);
    filer->writeDouble(50, m_obliquing / veldrin::angleUnit(*filer));
    filer->writeInt16(71, (m_backwards ? kBackwards : 0) | (m_upsideDown ? kUpsideDown : 0));
    filer->writeDouble(42, m_textSize > 0.0 ? m_textSize : kUsualHeight);
    filer->writeItem(3, m_fileName);
    return filer->writeItem(4, "");
}

AcDbTextStyleTable::AcDbTextStyleTable() = default;
AcDbTextStyleTable::~AcDbTextStyleTable() = default;

AcRxClass* AcDbTextStyleTable::recordClass() const {
    return AcDbTextStyleTableRecord::desc();
}
