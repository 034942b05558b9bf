#pragma once

#include "drawing/AcDbObject.h"
#include "drawing/SlotTable.h"

#include <memory>
#include <string>

class AcDbBlockTableRecord;
class AcDbDictionary;
class AcDbSymbolTable;
class AcDbSymbolTableRecord;

// The drawing room's own door to the state of objects: for what makes, reads, copies and replaces them. It
// does not ask how an object is open, so whoever uses it answers for that; nothing else may.
class VELDRIN_API AcDbObjectAccess {
public:
    // Null for an id without an object.
    static veldrin::Slot* slot(AcDbObjectId id);
    static AcDbObject* object(AcDbObjectId id);

    // Takes the object into the database; it is then open for write. A handle of 0 asks for the next one. On
    // failure (eAlreadyInDatabase, eHandleExists) it is still the caller's.
    static Acad::ErrorStatus add(AcDbDatabase& database, AcDbObject* object, AcDbObjectId owner,
                                 std::uint64_t handle = 0);
    // Puts another object into a slot, under the same id and owner; the one before is deleted.
    static void replace(AcDbObjectId id, std::unique_ptr<AcDbObject> object);
    static void setOwner(AcDbObject& object, AcDbObjectId owner) { object.m_owner = owner; }
    static void setExtensionDictionary(AcDbObject& object, AcDbObjectId dictionary);
    static AcDbObjectId extensionDictionary(const AcDbObject& object);
    static void setErased(AcDbObjectId id, bool erased); // files it for undo

    // All that the object files. The object need not be open.
    static Acad::ErrorStatus record(const AcDbObject& object, AcDb::FilerType type, std::string& record);
    // What was drawn, or looked up, by way of the object may be another now.
    static void touch(const AcDbObject& object);
    static void touchTables(AcDbDatabase& database);

    static void appendToBlock(AcDbBlockTableRecord& block, AcDbObjectId entity);
    static Acad::ErrorStatus addToTable(AcDbSymbolTable& table, AcDbSymbolTableRecord* record);
    // Lists a record of the database that no table lists.
    static void adoptRecord(AcDbSymbolTable& table, AcDbSymbolTableRecord& record);
    static void putEntry(AcDbDictionary& dictionary, const std::string& name, AcDbObjectId entry);
    // Null when the table has no such record that is not erased; the table may be open in any way.
    static AcDbObjectId findRecord(AcDbObjectId table, const std::string& name);
    // Finds the tables and the fixed records of a drawing that was filled object by object. False when one is
    // missing.
    static bool findRoots(AcDbDatabase& database);
};

namespace veldrin {

// Holds an object readable whatever else holds it.
class VELDRIN_API ReadAccess {
public:
    explicit ReadAccess(AcDbObjectId id);
    ~ReadAccess();
    ReadAccess(const ReadAccess&) = delete;
    ReadAccess& operator=(const ReadAccess&) = delete;

private:
    AcDbObjectId m_id;
};

} // namespace veldrin
