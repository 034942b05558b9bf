#include "drawing/AcDbRegAppTable.h"

#include "drawing/AcDbDxfFiler.h"
#include "runtime/AcRxMacros.h"

ACRX_DEFINE_MEMBERS(AcDbRegAppTableRecord, AcDbSymbolTableRecord, "APPID");
ACRX_DEFINE_MEMBERS(AcDbRegAppTable, AcDbSymbolTable, "");

AcDbRegAppTableRecord::AcDbRegAppTableRecord() = default;
AcDbRegAppTableRecord::~AcDbRegAppTableRecord() = default;

Acad::ErrorStatus AcDbRegAppTableRecord::dxfInFields(AcDbDxfFiler* filer) {
    return dxfInItems(*filer, "AcDbRegAppTableRecord", [](const AcDbDxfItem&) { return Acad::eOk; });
}

Acad::ErrorStatus AcDbRegAppTableRecord::dxfOutFields(AcDbDxfFiler* filer) const {
    AcDbObject::dxfOutFields(filer);
    dxfOutHead(*filer, "AcDbRegAppTableRecord", 0);
    return filer->filerStatus();
}

AcDbRegAppTable::AcDbRegAppTable() = default;
AcDbRegAppTable::~AcDbRegAppTable() = default;

AcRxClass* AcDbRegAppTable::recordClass() const {
    return AcDbRegAppTableRecord::desc();
}
