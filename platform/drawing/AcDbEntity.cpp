#include "drawing/AcDbEntity.h"

#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbLayerTable.h"
#include "drawing/AcDbLinetypeTable.h"
#include "drawing/AcDbObjectAccess.h"
#include "runtime/AcRxMacros.h"

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbEntity, AcDbObject);

AcDbEntity::AcDbEntity() = default;
AcDbEntity::~AcDbEntity() = default;

namespace {

std::string recordName(AcDbObjectId id) {
    const AcDbObjectPointer<AcDbSymbolTableRecord> record(id, AcDb::kForRead, true);
    return record ? record->getName() : std::string();
}

// Whether an entity may carry the id of a table record.
Acad::ErrorStatus checkRecord(const AcDbEntity& entity, AcDbObjectId id, const AcRxClass* recordClass) {
    if (id.isNull()) return Acad::eNullObjectId;
    if (!id.isValid()) return Acad::eInvalidInput;
    const AcRxClass* found = id.objectClass();
    if (found && !found->isDerivedFrom(recordClass)) return Acad::eNotThatKindOfClass;
    const bool foreign = entity.database() && id.database() != entity.database();
    return foreign ? Acad::eWrongDatabase : Acad::eOk;
}

AcDbDatabase* databaseFor(const AcDbEntity& entity) {
    if (AcDbDatabase* own = entity.database()) return own;
    return acdbHostApplicationServices()->workingDatabase();
}

Acad::ErrorStatus findRecord(AcDbObjectId table, const char* name, AcDbObjectId& id) {
    if (!name) return Acad::eInvalidInput;
    id = AcDbObjectAccess::findRecord(table, name);
    return id.isNull() ? Acad::eKeyNotFound : Acad::eOk;
}

} // namespace

std::string AcDbEntity::layer() const {
    return recordName(m_layer);
}
std::string AcDbEntity::linetype() const {
    return recordName(m_linetype);
}

Acad::ErrorStatus AcDbEntity::setLayer(AcDbObjectId layer, bool, bool) {
    const Acad::ErrorStatus status = checkRecord(*this, layer, AcDbLayerTableRecord::desc());
    if (status != Acad::eOk) return status;
    assertWriteEnabled();
    m_layer = layer;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::setLayer(const char* name) {
    const AcDbDatabase* database = databaseFor(*this);
    if (!database) return Acad::eNoDocument;
    AcDbObjectId id;
    const Acad::ErrorStatus status = findRecord(database->layerTableId(), name, id);
    return status == Acad::eOk ? setLayer(id) : status;
}

Acad::ErrorStatus AcDbEntity::setLinetype(AcDbObjectId linetype, bool) {
    const Acad::ErrorStatus status = checkRecord(*this, linetype, AcDbLinetypeTableRecord::desc());
    if (status != Acad::eOk) return status;
    assertWriteEnabled();
    m_linetype = linetype;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::setLinetype(const char* name) {
    const AcDbDatabase* database = databaseFor(*this);
    if (!database) return Acad::eNoDocument;
    AcDbObjectId id;
    const Acad::ErrorStatus status = findRecord(database->linetypeTableId(), name, id);
    return status == Acad::eOk ? setLinetype(id) : status;
}

Acad::ErrorStatus AcDbEntity::setLinetypeScale(double scale) {
    if (!(scale > 0.0)) return Acad::eInvalidInput;
    assertWriteEnabled();
    m_linetypeScale = scale;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::setColor(const AcCmColor& color, bool) {
    if (color.colorIndex() < AcCmColor::kByBlock || color.colorIndex() > AcCmColor::kByLayer)
        return Acad::eInvalidInput;
    assertWriteEnabled();
    m_color = color;
    m_colorIsSet = true;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::setColorIndex(Adesk::UInt16 index, bool doSubents) {
    if (index > AcCmColor::kByLayer) return Acad::eInvalidInput;
    return setColor(AcCmColor(static_cast<std::int16_t>(index)), doSubents);
}

Acad::ErrorStatus AcDbEntity::setLineWeight(AcDb::LineWeight weight, bool) {
    constexpr AcDb::LineWeight kThickest = 211;
    if (weight < AcDb::kLnWtByLwDefault || weight > kThickest) return Acad::eInvalidInput;
    assertWriteEnabled();
    m_lineWeight = weight;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::setVisibility(AcDb::Visibility visibility, bool) {
    assertWriteEnabled();
    m_visible = visibility == AcDb::kVisible;
    return Acad::eOk;
}

void AcDbEntity::setPropertiesFrom(const AcDbEntity* other) {
    if (!other || other == this) return;
    assertWriteEnabled();
    m_layer = other->m_layer;
    m_linetype = other->m_linetype;
    m_linetypeScale = other->m_linetypeScale;
    m_color = other->m_color;
    m_colorIsSet = other->m_colorIsSet;
    m_lineWeight = other->m_lineWeight;
    m_visible = other->m_visible;
}

void AcDbEntity::setDatabaseDefaults(const AcDbDatabase& database) {
    assertWriteEnabled();
    const veldrin::HeaderVariables& current = database.header();
    if (m_layer.isNull()) m_layer = current.clayer.isNull() ? database.layerZero() : current.clayer;
    if (m_linetype.isNull())
        m_linetype = current.celtype.isNull() ? database.byLayerLinetype() : current.celtype;
    if (m_linetypeScale == 0.0) m_linetypeScale = current.celtscale;
    if (!m_colorIsSet) m_color = current.cecolor;
    m_colorIsSet = true;
    if (m_lineWeight == kLineWeightNotSet) m_lineWeight = current.celweight;
}

void AcDbEntity::recordGraphicsModified(bool modified) {
    if (modified) assertWriteEnabled();
}

void AcDbEntity::setAttributes(AcGiSubEntityTraits* traits) {
    if (!m_layer.isNull()) traits->setLayer(m_layer);
    if (!m_linetype.isNull()) traits->setLineType(m_linetype);
    if (m_linetypeScale > 0.0) traits->setLineTypeScale(m_linetypeScale);
    if (m_lineWeight != kLineWeightNotSet) traits->setLineWeight(m_lineWeight);
    if (!m_colorIsSet) return;
    if (m_color.isByColor())
        traits->setTrueColor(m_color);
    else
        traits->setColor(colorIndex());
}
