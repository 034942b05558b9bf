#include "drawing/AcDbDatabase.h"

#include "drawing/AcDbBlockTable.h"
#include "drawing/AcDbDictionary.h"
#include "drawing/AcDbLayerTable.h"
#include "drawing/AcDbLinetypeTable.h"
#include "drawing/AcDbObjectAccess.h"
#include "drawing/AcDbRegAppTable.h"
#include "drawing/AcDbTextStyleTable.h"
#include "drawing/DatabaseRegistry.h"
#include "drawing/SlotTable.h"
#include "drawing/UndoLog.h"
#include "runtime/CException.h"
#include "runtime/Host.h"

#include <memory>

using veldrin::Host;

AcDbDatabase::AcDbDatabase(bool buildDefaultDrawing)
    : m_slots(std::make_unique<veldrin::SlotTable>()), m_undo(std::make_unique<veldrin::UndoLog>(*this)) {
    if (!Host::exists()) throw CException("A drawing needs a host.");
    m_generation = Host::current().databases().add(this);
    if (buildDefaultDrawing) buildDefault();
}

AcDbDatabase::~AcDbDatabase() {
    if (Host::exists()) Host::current().databases().remove(m_generation);
}

namespace {

// Adds an object that nobody else knows yet, and closes it.
AcDbObjectId place(AcDbDatabase& database, std::unique_ptr<AcDbObject> object) {
    if (AcDbObjectAccess::add(database, object.get(), {}) != Acad::eOk) return {};
    AcDbObject* const added = object.release();
    added->close();
    return added->objectId();
}

template<class Record>
AcDbObjectId placeRecord(AcDbObjectId tableId, const char* name) {
    auto* const table = static_cast<AcDbSymbolTable*>(AcDbObjectAccess::object(tableId));
    auto record = std::make_unique<Record>();
    record->setName(name);
    if (AcDbObjectAccess::addToTable(*table, record.get()) != Acad::eOk) return {};
    Record* const added = record.release();
    added->close();
    return added->objectId();
}

} // namespace

void AcDbDatabase::buildDefault() {
    m_undo->setRecording(false);
    m_blockTable = place(*this, std::make_unique<AcDbBlockTable>());
    m_layerTable = place(*this, std::make_unique<AcDbLayerTable>());
    m_linetypeTable = place(*this, std::make_unique<AcDbLinetypeTable>());
    m_textStyleTable = place(*this, std::make_unique<AcDbTextStyleTable>());
    m_regAppTable = place(*this, std::make_unique<AcDbRegAppTable>());
    m_namedObjects = place(*this, std::make_unique<AcDbDictionary>());
    m_byBlock = placeRecord<AcDbLinetypeTableRecord>(m_linetypeTable, "ByBlock");
    m_byLayer = placeRecord<AcDbLinetypeTableRecord>(m_linetypeTable, "ByLayer");
    m_continuous = placeRecord<AcDbLinetypeTableRecord>(m_linetypeTable, "Continuous");
    m_layerZero = placeRecord<AcDbLayerTableRecord>(m_layerTable, "0");
    placeRecord<AcDbRegAppTableRecord>(m_regAppTable, "ACAD");
    m_modelSpace = placeRecord<AcDbBlockTableRecord>(m_blockTable, ACDB_MODEL_SPACE);
    m_paperSpace = placeRecord<AcDbBlockTableRecord>(m_blockTable, ACDB_PAPER_SPACE);
    m_header.clayer = m_layerZero;
    m_header.celtype = m_byLayer;
    m_standardStyle = placeRecord<AcDbTextStyleTableRecord>(m_textStyleTable, "Standard");
    m_header.textstyle = m_standardStyle;
    m_undo->setRecording(true);
    m_modified = false;
}

Acad::ErrorStatus AcDbDatabase::getBlockTable(AcDbBlockTable*& table, AcDb::OpenMode mode) {
    return acdbOpenObject(table, m_blockTable, mode);
}

Acad::ErrorStatus AcDbDatabase::getLayerTable(AcDbLayerTable*& table, AcDb::OpenMode mode) {
    return acdbOpenObject(table, m_layerTable, mode);
}

Acad::ErrorStatus AcDbDatabase::getLinetypeTable(AcDbLinetypeTable*& table, AcDb::OpenMode mode) {
    return acdbOpenObject(table, m_linetypeTable, mode);
}

Acad::ErrorStatus AcDbDatabase::getTextStyleTable(AcDbTextStyleTable*& table, AcDb::OpenMode mode) {
    return acdbOpenObject(table, m_textStyleTable, mode);
}

Acad::ErrorStatus AcDbDatabase::getRegAppTable(AcDbRegAppTable*& table, AcDb::OpenMode mode) {
    return acdbOpenObject(table, m_regAppTable, mode);
}

Acad::ErrorStatus AcDbDatabase::getNamedObjectsDictionary(AcDbDictionary*& dictionary, AcDb::OpenMode mode) {
    return acdbOpenObject(dictionary, m_namedObjects, mode);
}

Acad::ErrorStatus AcDbDatabase::addAcDbObject(AcDbObject* object) {
    return AcDbObjectAccess::add(*this, object, object ? object->ownerId() : AcDbObjectId());
}

Acad::ErrorStatus AcDbDatabase::addAcDbObject(AcDbObjectId& id, AcDbObject* object) {
    const Acad::ErrorStatus status = addAcDbObject(object);
    id = status == Acad::eOk ? object->objectId() : AcDbObjectId();
    return status;
}

Acad::ErrorStatus AcDbDatabase::getAcDbObjectId(AcDbObjectId& id, AcDbHandle handle) const {
    const std::uint32_t slot = m_slots->findHandle(handle.value());
    id = slot == 0 ? AcDbObjectId() : AcDbObjectId(m_generation, slot);
    return slot == 0 ? Acad::eUnknownHandle : Acad::eOk;
}

AcDbHandle AcDbDatabase::handseed() const {
    return AcDbHandle(m_slots->nextHandle());
}

void AcDbDatabase::setHeader(const veldrin::HeaderVariables& values) {
    m_undo->fileHeader(m_header);
    m_header = values;
    AcDbObjectAccess::touchTables(*this);
}

AcGeMatrix3d AcDbDatabase::ucsToWorld() const {
    return AcGeMatrix3d::coordSystem(m_header.ucsOrigin, m_header.ucsXDir, m_header.ucsYDir,
                                     m_header.ucsXDir.crossProduct(m_header.ucsYDir));
}

AcDbObjectId AcDbIdMapping::find(AcDbObjectId original) const {
    const auto found = m_byOriginal.find(original);
    return found == m_byOriginal.end() ? AcDbObjectId() : found->second;
}

void AcDbIdMapping::assign(AcDbObjectId original, AcDbObjectId copy) {
    m_pairs.emplace_back(original, copy);
    m_byOriginal[original] = copy;
}

AcDbDatabase* AcDbHostApplicationServices::workingDatabase() const {
    return Host::exists() ? Host::current().databases().working() : nullptr;
}

void AcDbHostApplicationServices::setWorkingDatabase(AcDbDatabase* database) {
    if (Host::exists()) Host::current().databases().setWorking(database);
}

AcDbHostApplicationServices* acdbHostApplicationServices() {
    static AcDbHostApplicationServices services; // has no state of its own
    return &services;
}
