#include "util/DrawingHelpers.h"

#include "drawing/AcDbBlockTable.h"
#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbEntity.h"
#include "editor/aced.h"
#include "util/DocumentLock.h"

namespace plumb {

AcDbDatabase* CurrentDatabase() {
    AcApDocManager* documents = acDocManagerPtr();
    AcApDocument* document = documents ? documents->curDocument() : nullptr;
    return document ? document->database() : nullptr;
}

namespace {

Acad::ErrorStatus append(AcDbEntity* entity) {
    const DocumentLock lock;
    AcDbDatabase* database = CurrentDatabase();
    AcDbBlockTable* blocks = nullptr;
    if (!database || database->getBlockTable(blocks, AcDb::kForRead) != Acad::eOk) {
        acedAlert("Failed to get block table!");
        return Acad::eNoDocument;
    }
    AcDbObjectPointer<AcDbBlockTable> table;
    table.acquire(blocks);
    AcDbBlockTableRecord* record = nullptr;
    Acad::ErrorStatus status = blocks->getAt(ACDB_MODEL_SPACE, record, AcDb::kForWrite);
    if (status != Acad::eOk) {
        acedAlert("Failed to get block table record!");
        acutPrintf("\n%i", status);
        return status;
    }
    AcDbObjectPointer<AcDbBlockTableRecord> space;
    space.acquire(record);
    status = record->appendAcDbEntity(entity);
    if (status != Acad::eOk) acedAlert("Failed to append entity!");
    return status;
}

} // namespace

bool AppendToModelSpace(AcDbEntity* entity) {
    if (append(entity) == Acad::eOk) return true;
    delete entity;
    return false;
}

bool appendAndClose(AcDbEntity* entity) {
    if (!entity || !AppendToModelSpace(entity)) return false;
    entity->close();
    return true;
}

} // namespace plumb
