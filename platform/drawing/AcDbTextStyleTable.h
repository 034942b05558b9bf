#pragma once

#include "drawing/AcDbSymbolTable.h"

class VELDRIN_API AcDbTextStyleTableRecord : public AcDbSymbolTableRecord {
public:
    ACRX_DECLARE_MEMBERS(AcDbTextStyleTableRecord);

    AcDbTextStyleTableRecord();
    ~AcDbTextStyleTableRecord() override;

    const std::string& fileName() const { return m_fileName; } // of the font
    Acad::ErrorStatus setFileName(const char* fileName);
    double textSize() const { return m_textSize; } // fixed height, 0 for none
    Acad::ErrorStatus setTextSize(double size);
    double xScale() const { return m_xScale; } // width factor
    Acad::ErrorStatus setXScale(double scale);
    double obliquingAngle() const { return m_obliquing; } // radians
    Acad::ErrorStatus setObliquingAngle(double angle);
    bool isBackwards() const { return m_backwards; }
    Acad::ErrorStatus setIsBackwards(bool backwards);
    bool isUpsideDown() const { return m_upsideDown; }
    Acad::ErrorStatus setIsUpsideDown(bool upsideDown);

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

private:
    std::string m_fileName{"txt"};
    double m_textSize = 0.0;
    double m_xScale = 1.0;
    double m_obliquing = 0.0;
    bool m_backwards = false;
    bool m_upsideDown = false;
};

// Holds Standard from the start.
class VELDRIN_API AcDbTextStyleTable : public AcDbSymbolTable {
public:
    ACRX_DECLARE_MEMBERS(AcDbTextStyleTable);
    AcDbTextStyleTable();
    ~AcDbTextStyleTable() override;

protected:
    AcRxClass* recordClass() const override;
};
