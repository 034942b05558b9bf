#pragma once

#include "drawing/AcDbForeignEntity.h"

// A hatched area. Its boundary is drawn; the pattern is kept and written back, but not drawn.
class VELDRIN_API AcDbHatch : public AcDbForeignEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbHatch);
    AcDbHatch();
    ~AcDbHatch() override;

protected:
    std::vector<Outline> outlines() const override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    bool isFlat(const resbuf& group, int index) const override;
    void groupsChanged() override;
};
