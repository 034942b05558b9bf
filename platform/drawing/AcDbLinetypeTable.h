#pragma once

#include "drawing/AcDbSymbolTable.h"

#include <vector>

// A pattern of dashes (above 0), gaps (below 0) and dots (0), drawing units at scale 1.
class VELDRIN_API AcDbLinetypeTableRecord : public AcDbSymbolTableRecord {
public:
    ACRX_DECLARE_MEMBERS(AcDbLinetypeTableRecord);

    AcDbLinetypeTableRecord();
    ~AcDbLinetypeTableRecord() override;

    const std::string& comments() const { return m_comments; }
    Acad::ErrorStatus setComments(const std::string& comments);
    const std::vector<double>& dashes() const { return m_dashes; } // empty: continuous
    Acad::ErrorStatus setDashes(std::vector<double> dashes);
    double patternLength() const;

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

private:
    std::string m_comments;
    std::vector<double> m_dashes;
};

// Holds ByBlock, ByLayer and Continuous from the start.
class VELDRIN_API AcDbLinetypeTable : public AcDbSymbolTable {
public:
    ACRX_DECLARE_MEMBERS(AcDbLinetypeTable);
    AcDbLinetypeTable();
    ~AcDbLinetypeTable() override;

protected:
    AcRxClass* recordClass() const override;
};
