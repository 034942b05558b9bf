#pragma once

#include "drawing/AcCmColor.h"
#include "drawing/AcDbSymbolTable.h"

class VELDRIN_API AcDbLayerTableRecord : public AcDbSymbolTableRecord {
public:
    ACRX_DECLARE_MEMBERS(AcDbLayerTableRecord);

    AcDbLayerTableRecord(); // colour 7, linetype Continuous, default weight, on, thawed, unlocked, plotted
    ~AcDbLayerTableRecord() override;

    AcCmColor color() const { return m_color; }
    Acad::ErrorStatus setColor(const AcCmColor& color);
    AcDbObjectId linetypeObjectId() const { return m_linetype; } // null until added stands for Continuous
    Acad::ErrorStatus setLinetypeObjectId(AcDbObjectId linetype);
    AcDb::LineWeight lineWeight() const { return m_lineWeight; }
    Acad::ErrorStatus setLineWeight(AcDb::LineWeight weight);
    const std::string& plotStyleName() const { return m_plotStyleName; }
    Acad::ErrorStatus setPlotStyleName(const char* name);
    bool isPlottable() const { return m_plottable; }
    Acad::ErrorStatus setIsPlottable(bool plottable);
    bool isOff() const { return m_off; }
    Acad::ErrorStatus setIsOff(bool off);
    bool isFrozen() const { return m_frozen; }
    Acad::ErrorStatus setIsFrozen(bool frozen);
    bool isLocked() const { return m_locked; }
    Acad::ErrorStatus setIsLocked(bool locked);
    void setDatabaseDefaults(const AcDbDatabase& database) override;

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

private:
    AcCmColor m_color{AcCmColor::kForeground};
    AcDbObjectId m_linetype;
    AcDb::LineWeight m_lineWeight = AcDb::kLnWtByLwDefault;
    std::string m_plotStyleName;
    bool m_plottable = true;
    bool m_off = false;
    bool m_frozen = false;
    bool m_locked = false;
};

class VELDRIN_API AcDbLayerTable : public AcDbSymbolTable {
public:
    ACRX_DECLARE_MEMBERS(AcDbLayerTable);
    AcDbLayerTable();
    ~AcDbLayerTable() override;

protected:
    AcRxClass* recordClass() const override;
};
