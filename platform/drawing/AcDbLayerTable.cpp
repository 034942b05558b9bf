#include "drawing/AcDbLayerTable.h"

#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbDwgFiler.h"
#include "drawing/AcDbDxfFiler.h"
#include "drawing/AcDbObjectAccess.h"
#include "drawing/ColorFiling.h"
#include "runtime/AcRxMacros.h"

#include <cstdlib>

ACRX_DEFINE_MEMBERS(AcDbLayerTableRecord, AcDbSymbolTableRecord, "LAYER");
ACRX_DEFINE_MEMBERS(AcDbLayerTable, AcDbSymbolTable, "");

namespace {

constexpr int kFrozen = 1;
constexpr int kLocked = 4;

} // namespace

AcDbLayerTableRecord::AcDbLayerTableRecord() = default;
AcDbLayerTableRecord::~AcDbLayerTableRecord() = default;

Acad::ErrorStatus AcDbLayerTableRecord::setColor(const AcCmColor& color) {
    assertWriteEnabled();
    const bool isOwn = color.isByColor() || (color.colorIndex() >= 1 && color.colorIndex() <= 255);
    if (!isOwn) return Acad::eInvalidInput;
    m_color = color;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLayerTableRecord::setLinetypeObjectId(AcDbObjectId linetype) {
    assertWriteEnabled();
    if (!linetype.isNull() && database() && linetype.database() != database()) return Acad::eWrongDatabase;
    m_linetype = linetype;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLayerTableRecord::setLineWeight(AcDb::LineWeight weight) {
    assertWriteEnabled();
    if (weight < 0 && weight != AcDb::kLnWtByLwDefault) return Acad::eInvalidInput;
    m_lineWeight = weight;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLayerTableRecord::setPlotStyleName(const char* name) {
    assertWriteEnabled();
    m_plotStyleName = name ? name : "";
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLayerTableRecord::setIsPlottable(bool plottable) {
    assertWriteEnabled();
    m_plottable = plottable;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLayerTableRecord::setIsOff(bool off) {
    assertWriteEnabled();
    m_off = off;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLayerTableRecord::setIsFrozen(bool frozen) {
    assertWriteEnabled();
    m_frozen = frozen;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLayerTableRecord::setIsLocked(bool locked) {
    assertWriteEnabled();
    m_locked = locked;
    return Acad::eOk;
}

void AcDbLayerTableRecord::setDatabaseDefaults(const AcDbDatabase& database) {
    if (m_linetype.isNull()) m_linetype = database.continuousLinetype();
}

Acad::ErrorStatus AcDbLayerTableRecord::dwgInFields(AcDbDwgFiler* filer) {
    const Acad::ErrorStatus status = AcDbSymbolTableRecord::dwgInFields(filer);
    if (status != Acad::eOk) return status;
    veldrin::readColor(*filer, m_color);
    filer->readHardPointerId(m_linetype);
    filer->readInt16(m_lineWeight);
    filer->readString(m_plotStyleName);
    filer->readBool(m_plottable);
    filer->readBool(m_off);
    filer->readBool(m_frozen);
    return filer->readBool(m_locked);
}

Acad::ErrorStatus AcDbLayerTableRecord::dwgOutFields(AcDbDwgFiler* filer) const {
    AcDbSymbolTableRecord::dwgOutFields(filer);
    veldrin::writeColor(*filer, m_color);
    filer->writeHardPointerId(m_linetype);
    filer->writeInt16(m_lineWeight);
    filer->writeString(m_plotStyleName);
    filer->writeBool(m_plottable);
    filer->writeBool(m_off);
    filer->writeBool(m_frozen);
    return filer->writeBool(m_locked);
}

Acad::ErrorStatus AcDbLayerTableRecord::dxfInFields(AcDbDxfFiler* filer) {
    return dxfInItems(*filer, "AcDbLayerTableRecord", [&](const AcDbDxfItem& item) {
        const auto number = static_cast<std::int16_t>(item.integer);
        switch (item.code) {
        case 70:
            m_frozen = (number & kFrozen) != 0;
            m_locked = (number & kLocked) != 0;
            return Acad::eOk;
        case AcDb::kDxfColor:
            m_off = number < 0;
            return setColor(AcCmColor(static_cast<std::int16_t>(std::abs(number))));
        case AcDb::kDxfTrueColor:
            m_color.setRGB(static_cast<std::uint32_t>(item.integer), m_color.colorIndex());
            return Acad::eOk;
        case AcDb::kDxfLinetypeName:
            m_linetype = filer->database()
                             ? AcDbObjectAccess::findRecord(filer->database()->linetypeTableId(), item.text)
                             : AcDbObjectId();
            return m_linetype.isNull() ? Acad::eKeyNotFound : Acad::eOk;
        case 290: return setIsPlottable(item.integer != 0);
        case AcDb::kDxfLineWeight: return setLineWeight(number);
        default: return Acad::eOk;
        }
    });
}

Acad::ErrorStatus AcDbLayerTableRecord::dxfOutFields(AcDbDxfFiler* filer) const {
    AcDbObject::dxfOutFields(filer);
    dxfOutHead(*filer, "AcDbLayerTableRecord", (m_frozen ? kFrozen : 0) | (m_locked ? kLocked : 0));
    filer->writeInt16(AcDb::kDxfColor, m_off ? -m_color.colorIndex() : m_color.colorIndex());
    if (m_color.isByColor()) filer->writeInt32(AcDb::kDxfTrueColor, static_cast<std::int32_t>(m_color.rgb()));
    const auto* linetype = AcDbSymbolTableRecord::cast(AcDbObjectAccess::object(m_linetype));
    filer->writeItem(AcDb::kDxfLinetypeName, linetype ? linetype->getName() : "Continuous");
    filer->writeBool(290, m_plottable);
    return filer->writeInt16(AcDb::kDxfLineWeight, m_lineWeight);
}

AcDbLayerTable::AcDbLayerTable() = default;
AcDbLayerTable::~AcDbLayerTable() = default;

AcRxClass* AcDbLayerTable::recordClass() const {
    return AcDbLayerTableRecord::desc();
}
