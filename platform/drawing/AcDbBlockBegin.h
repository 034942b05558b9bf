#pragma once

#include "drawing/AcDbEntity.h"

// The marks around the entities of a block, through which Lisp walks: in front of them BLOCK, which has the
// block's name and base point, behind them ENDBLK; SEQEND behind the attributes of a reference. They are
// never drawn, and come and go with what they belong to.

class VELDRIN_API AcDbBlockBegin : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbBlockBegin);
    AcDbBlockBegin();
    ~AcDbBlockBegin() override;

    // A changed base point is the block record's, which must not be open.
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

protected:
    Acad::ErrorStatus subErase(bool erasing) override;
};

class VELDRIN_API AcDbBlockEnd : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbBlockEnd);
    AcDbBlockEnd();
    ~AcDbBlockEnd() override;

    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

protected:
    Acad::ErrorStatus subErase(bool erasing) override;
};

class VELDRIN_API AcDbSequenceEnd : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbSequenceEnd);
    AcDbSequenceEnd();
    ~AcDbSequenceEnd() override;

    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

protected:
    Acad::ErrorStatus subErase(bool erasing) override;
};
