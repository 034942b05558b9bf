#pragma once

#include "drawing/AcDbObject.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

struct AcDbDxfItem;
class AcDbSymbolTable;

// An entry of a symbol table. Names compare without regard to case (A to Z) and keep the case they were
// given.
class VELDRIN_API AcDbSymbolTableRecord : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbSymbolTableRecord);

    AcDbSymbolTableRecord();
    ~AcDbSymbolTableRecord() override;

    const std::string& getName() const { return m_name; }
    // eInvalidName for an empty name or one with characters that exchange files cannot carry,
    // eDuplicateRecordName when the table has it already, eNotApplicable for a record that every drawing has.
    Acad::ErrorStatus setName(const std::string& name);
    // Takes the drawing's values for what was left open; called when the record is added to its table.
    virtual void setDatabaseDefaults(const AcDbDatabase& database);

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

protected:
    Acad::ErrorStatus subErase(bool erasing) override;
    // The record has come into a drawing: the place to make what belongs to it.
    virtual void subAdded() {}
    // Writes the class's marker, the name and the flags.
    void dxfOutHead(AcDbDxfFiler& filer, const char* className, int flags) const;
    // Steps to the class's part and hands over its groups one by one, the name excepted, which it sets. The
    // taker answers a failing status for a value that it cannot take.
    using ItemTaker = std::function<Acad::ErrorStatus(const AcDbDxfItem&)>;
    Acad::ErrorStatus dxfInItems(AcDbDxfFiler& filer, const char* className, const ItemTaker& take);

    std::string m_name;

private:
    friend class AcDbObjectAccess;
    friend class AcDbSymbolTable;
    AcDbSymbolTable* table() const; // null while in none
    bool isFixed() const;
    void nameChanged() const; // or whether it is erased
};

// A table of a drawing: records by name, in the order in which they were added.
class VELDRIN_API AcDbSymbolTable : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbSymbolTable);

    AcDbSymbolTable();
    ~AcDbSymbolTable() override;

    // eKeyNotFound when there is none.
    Acad::ErrorStatus getAt(const std::string& name, AcDbObjectId& id, bool getErased = false) const;
    template<class Record>
    Acad::ErrorStatus getAt(const std::string& name, Record*& record, AcDb::OpenMode mode,
                            bool getErased = false) const {
        AcDbObjectId id;
        record = nullptr;
        const Acad::ErrorStatus status = getAt(name, id, getErased);
        return status == Acad::eOk ? acdbOpenObject(record, id, mode, getErased) : status;
    }
    bool has(const std::string& name) const;
    // The record is then in the database and open for write. The table must be open for write. Errors:
    // eInvalidName, eDuplicateRecordName, eNotThatKindOfClass; the record is then still the caller's.
    Acad::ErrorStatus add(AcDbSymbolTableRecord* record);
    Acad::ErrorStatus add(AcDbObjectId& id, AcDbSymbolTableRecord* record);
    // Ids in order, erased ones left out.
    std::vector<AcDbObjectId> recordIds() const;

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

protected:
    // The class of the records that the table takes.
    virtual AcRxClass* recordClass() const;

private:
    friend class AcDbSymbolTableRecord;
    friend class AcDbObjectAccess;
    AcDbObjectId lookUp(const std::string& name) const; // erased ones too, but others first
    Acad::ErrorStatus insert(AcDbSymbolTableRecord* record);

    std::vector<AcDbObjectId> m_records;
    mutable std::map<std::string, AcDbObjectId> m_byName; // key: name in upper case
    mutable bool m_indexIsValid = true;
};
