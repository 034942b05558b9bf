#pragma once

#include "drawing/AcDbForeignEntity.h"

// A polyline in space, from another program. Behind its own groups stand those of its vertices: the point and
// the flags of each.
class VELDRIN_API AcDb3dPolyline : public AcDbForeignEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDb3dPolyline);
    AcDb3dPolyline();
    ~AcDb3dPolyline() override;

    struct Vertex {
        AcGePoint3d point;
        int flags = 0; // as exchange data has them: 8 put in by a spline, 16 its frame
    };
    std::vector<Vertex> vertices() const;
    Acad::ErrorStatus setVertices(const std::vector<Vertex>& vertices);

protected:
    std::vector<Outline> outlines() const override;
    bool isOwnGroup(const resbuf& group, const AcDbDxfFiler& filer) const override;
    Markers markersFor(const resbuf* groups) const override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
};
