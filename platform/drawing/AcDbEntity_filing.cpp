#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbDwgFiler.h"
#include "drawing/AcDbDxfFiler.h"
#include "drawing/AcDbEntity.h"
#include "drawing/AcDbLayerTable.h"
#include "drawing/AcDbObjectAccess.h"
#include "drawing/AcGiPalette.h"
#include "drawing/ColorFiling.h"
#include "drawing/dxf_groups.h"

#include <algorithm>

Acad::ErrorStatus AcDbEntity::dwgOutFields(AcDbDwgFiler* filer) const {
    const Acad::ErrorStatus status = AcDbObject::dwgOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeHardPointerId(m_layer);
    filer->writeHardPointerId(m_linetype);
    filer->writeDouble(m_linetypeScale);
    veldrin::writeColor(*filer, m_color);
    filer->writeBool(m_colorIsSet);
    filer->writeInt16(m_lineWeight);
    filer->writeBool(m_visible);
    return filer->endBasePart();
}

Acad::ErrorStatus AcDbEntity::dwgInFields(AcDbDwgFiler* filer) {
    const Acad::ErrorStatus status = AcDbObject::dwgInFields(filer);
    if (status != Acad::eOk) return status;
    filer->readHardPointerId(m_layer);
    filer->readHardPointerId(m_linetype);
    filer->readDouble(m_linetypeScale);
    veldrin::readColor(*filer, m_color);
    filer->readBool(m_colorIsSet);
    filer->readInt16(m_lineWeight);
    filer->readBool(m_visible);
    return filer->endBasePart();
}

namespace {

constexpr int kCodePaperSpace = 67;
constexpr int kCodeLayout = 410;

void writeSpace(const AcDbEntity& entity, AcDbDxfFiler& filer) {
    const AcDbDatabase* database = entity.database();
    if (!database) return;
    const bool inPaper = entity.ownerId() == database->paperSpaceId();
    const bool inModel = entity.ownerId() == database->modelSpaceId();
    if (inPaper || (inModel && filer.isEntityList())) filer.writeInt16(kCodePaperSpace, inPaper ? 1 : 0);
    if (filer.isEntityList() && (inPaper || inModel))
        filer.writeItem(kCodeLayout, inPaper ? "Layout1" : "Model");
}

// A layer that data from outside names and the drawing lacks comes into being with it.
Acad::ErrorStatus findOrAddLayer(AcDbDatabase* database, const std::string& name, AcDbObjectId& id) {
    if (!database) return Acad::eNotInDatabase;
    id = AcDbObjectAccess::findRecord(database->layerTableId(), name);
    if (!id.isNull()) return Acad::eOk;
    const AcDbObjectPointer<AcDbLayerTable> table(database->layerTableId(), AcDb::kForWrite);
    if (!table) return table.openStatus();
    AcDbObjectPointer<AcDbLayerTableRecord> record;
    record.create();
    const Acad::ErrorStatus status = record->setName(name);
    return status == Acad::eOk ? table->add(id, record.object()) : status;
}

Acad::ErrorStatus findLinetype(AcDbDatabase* database, const std::string& name, AcDbObjectId& id) {
    if (!database) return Acad::eNotInDatabase;
    id = AcDbObjectAccess::findRecord(database->linetypeTableId(), name);
    return id.isNull() ? Acad::eKeyNotFound : Acad::eOk;
}

} // namespace

Acad::ErrorStatus AcDbEntity::dxfOutFields(AcDbDxfFiler* filer) const {
    const Acad::ErrorStatus status = AcDbObject::dxfOutFields(filer);
    if (status != Acad::eOk) return status;
    filer->writeItem(AcDb::kDxfSubclass, "AcDbEntity");
    writeSpace(*this, *filer);
    const std::string layerName = layer();
    filer->writeItem(AcDb::kDxfLayerName, layerName.empty() ? std::string("0") : layerName);
    const AcDbDatabase* database = m_linetype.database();
    if (database && m_linetype != database->byLayerLinetype())
        filer->writeItem(AcDb::kDxfLinetypeName, linetype());
    if (m_color.isByColor() || !m_color.isByLayer()) filer->writeInt16(AcDb::kDxfColor, m_color.colorIndex());
    if (m_color.isByColor()) filer->writeInt32(AcDb::kDxfTrueColor, static_cast<std::int32_t>(m_color.rgb()));
    if (m_linetypeScale != 1.0 && m_linetypeScale != 0.0)
        filer->writeDouble(AcDb::kDxfLinetypeScale, m_linetypeScale);
    if (!m_visible) filer->writeInt16(AcDb::kDxfVisibility, 1);
    if (m_lineWeight != AcDb::kLnWtByLayer && m_lineWeight != kLineWeightNotSet)
        filer->writeInt16(AcDb::kDxfLineWeight, m_lineWeight);
    return filer->filerStatus();
}

bool AcDbEntity::isCommonGroup(int code) {
    static constexpr int codes[] = {AcDb::kDxfEntityName,    AcDb::kDxfStart,         AcDb::kDxfHandle,
                                    AcDb::kDxfSoftPointerId, kCodePaperSpace,         kCodeLayout,
                                    AcDb::kDxfLayerName,     AcDb::kDxfLinetypeName,  AcDb::kDxfColor,
                                    AcDb::kDxfTrueColor,     AcDb::kDxfLinetypeScale, AcDb::kDxfVisibility,
                                    AcDb::kDxfLineWeight};
    return std::find(std::begin(codes), std::end(codes), code) != std::end(codes);
}

Acad::ErrorStatus AcDbEntity::dxfInCommon(const AcDbDxfItem& item, AcDbDxfFiler* filer, bool& known) {
    known = true;
    AcDbObjectId id;
    Acad::ErrorStatus status = Acad::eOk;
    switch (item.code) {
    case AcDb::kDxfEntityName:
    case AcDb::kDxfStart:
    case AcDb::kDxfHandle:
    case AcDb::kDxfSoftPointerId:
    case kCodePaperSpace:
    case kCodeLayout: return Acad::eOk;
    case AcDb::kDxfLayerName:
        status = findOrAddLayer(filer->database(), item.text, id);
        return status == Acad::eOk ? setLayer(id) : status;
    case AcDb::kDxfLinetypeName:
        status = findLinetype(filer->database(), item.text, id);
        return status == Acad::eOk ? setLinetype(id) : status;
    case AcDb::kDxfColor: return setColor(AcCmColor(static_cast<std::int16_t>(veldrin::integerOf(item))));
    case AcDb::kDxfTrueColor: {
        const auto rgb = static_cast<std::uint32_t>(veldrin::integerOf(item));
        AcCmColor color;
        color.setRGB(rgb, veldrin::nearestIndex(rgb));
        return setColor(color);
    }
    case AcDb::kDxfLinetypeScale: return setLinetypeScale(veldrin::realOf(item));
    case AcDb::kDxfVisibility:
        return setVisibility(veldrin::integerOf(item) == 0 ? AcDb::kVisible : AcDb::kInvisible);
    case AcDb::kDxfLineWeight: return setLineWeight(static_cast<AcDb::LineWeight>(veldrin::integerOf(item)));
    default: known = false; return Acad::eOk;
    }
}

Acad::ErrorStatus AcDbEntity::dxfInFields(AcDbDxfFiler* filer) {
    Acad::ErrorStatus status = AcDbObject::dxfInFields(filer);
    AcDbDxfItem item;
    while (status == Acad::eOk && filer->readItem(item) == Acad::eOk) {
        if (item.code == AcDb::kDxfSubclass && item.text == "AcDbEntity") continue;
        bool known = false;
        status = dxfInCommon(item, filer, known);
        if (!known) return filer->pushBackItem();
    }
    return status;
}

Acad::ErrorStatus AcDbEntity::dxfInGroups(AcDbDxfFiler* filer,
                                          const std::function<bool(const AcDbDxfItem&)>& take) {
    Acad::ErrorStatus status = Acad::eOk;
    AcDbDxfItem item;
    while (status == Acad::eOk && filer->readItem(item) == Acad::eOk) {
        const bool isExtendedData = item.code == AcDb::kDxfXDataStart || item.code >= 1000;
        if (isExtendedData) return filer->pushBackItem();
        if (take(item) || item.code == AcDb::kDxfSubclass) continue;
        bool known = false;
        status = dxfInCommon(item, filer, known);
    }
    return status;
}
