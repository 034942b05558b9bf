#pragma once

#include "drawing/AcDbSymbolTable.h"
#include "geometry/AcGePoint3d.h"

#include <vector>

class AcDbEntity;

inline constexpr const char* ACDB_MODEL_SPACE = "*Model_Space";
inline constexpr const char* ACDB_PAPER_SPACE = "*Paper_Space";

// A block: entities in drawing order about a base point. Model and paper space are blocks too.
class VELDRIN_API AcDbBlockTableRecord : public AcDbSymbolTableRecord {
public:
    ACRX_DECLARE_MEMBERS(AcDbBlockTableRecord);

    AcDbBlockTableRecord();
    ~AcDbBlockTableRecord() override;

    AcGePoint3d origin() const { return m_origin; }
    Acad::ErrorStatus setOrigin(const AcGePoint3d& origin);
    bool isLayout() const;    // model or paper space
    bool isAnonymous() const; // "*..." that is no layout
    // As exchange data has them: 1 anonymous, 2 with attributes to ask for.
    int blockFlags() const;
    bool hasAttributeDefinitions() const; // that are not constant
    // The BLOCK and ENDBLK that stand around the entities; null in a record that is in no drawing.
    AcDbObjectId beginId() const { return m_begin; }
    AcDbObjectId endId() const { return m_end; }
    AcDbObjectId firstEntity() const; // ENDBLK for an empty block

    // The entity is then in the database, has taken the drawing's current properties for what was not set,
    // and is open for write. The record must be open for write. Errors: eAlreadyInDatabase,
    // eNotOpenForWrite, eNotInDatabase; the entity is then still the caller's.
    Acad::ErrorStatus appendAcDbEntity(AcDbEntity* entity);
    Acad::ErrorStatus appendAcDbEntity(AcDbObjectId& id, AcDbEntity* entity);
    // In drawing order, erased ones included.
    const std::vector<AcDbObjectId>& entityIds() const { return m_entities; }

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

protected:
    Acad::ErrorStatus subErase(bool erasing) override;
    void subAdded() override;

private:
    friend class AcDbObjectAccess;
    AcGePoint3d m_origin;
    AcDbObjectId m_begin;
    AcDbObjectId m_end;
    std::vector<AcDbObjectId> m_entities;
};

class VELDRIN_API AcDbBlockTable : public AcDbSymbolTable {
public:
    ACRX_DECLARE_MEMBERS(AcDbBlockTable);
    AcDbBlockTable();
    ~AcDbBlockTable() override;

protected:
    AcRxClass* recordClass() const override;
};
