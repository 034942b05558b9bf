#pragma once

#include "drawing/AcDbSymbolTable.h"

// The name of an application that keeps extended data in the drawing.
class VELDRIN_API AcDbRegAppTableRecord : public AcDbSymbolTableRecord {
public:
    ACRX_DECLARE_MEMBERS(AcDbRegAppTableRecord);
    AcDbRegAppTableRecord();
    ~AcDbRegAppTableRecord() override;

    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
};

class VELDRIN_API AcDbRegAppTable : public AcDbSymbolTable {
public:
    ACRX_DECLARE_MEMBERS(AcDbRegAppTable);
    AcDbRegAppTable();
    ~AcDbRegAppTable() override;

protected:
    AcRxClass* recordClass() const override;
};
