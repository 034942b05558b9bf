#pragma once

#include "drawing/AcDbForeignEntity.h"

// A filled triangle or quadrangle in a plane; its third corner lies beside the first one.
class VELDRIN_API AcDbSolid : public AcDbForeignEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbSolid);
    AcDbSolid();
    ~AcDbSolid() override;

protected:
    explicit AcDbSolid(const char* dxfName);
    std::vector<Outline> outlines() const override;
    Markers markersFor(const resbuf* groups) const override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
};

// The same, from programs of old.
class VELDRIN_API AcDbTrace : public AcDbSolid {
public:
    ACRX_DECLARE_MEMBERS(AcDbTrace);
    AcDbTrace();
    ~AcDbTrace() override;
};

// A face in space, around its corners; edges may be hidden.
class VELDRIN_API AcDbFace : public AcDbForeignEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbFace);
    AcDbFace();
    ~AcDbFace() override;

protected:
    std::vector<Outline> outlines() const override;
    Markers markersFor(const resbuf* groups) const override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
};
