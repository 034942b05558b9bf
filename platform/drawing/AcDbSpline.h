#pragma once

#include "drawing/AcDbPathCurve.h"
#include "runtime/ResbufChain.h"

#include <memory>

// A free curve. Made from a polyline (getSpline) it keeps that polyline's exact shape: a row of straight and
// arc pieces that are smooth where the polyline is, measured along like it. From exchange data it keeps the
// groups that define it and is a row of short straight pieces along the B-spline that they mean.
class VELDRIN_API AcDbSpline : public veldrin::PathCurve {
public:
    ACRX_DECLARE_MEMBERS(AcDbSpline);

    AcDbSpline();
    // Vertices with one bulge each, in a plane with that normal.
    AcDbSpline(AcGePoint3dArray vertices, AcGeDoubleArray bulges, bool closed,
               const AcGeVector3d& normal = AcGeVector3d::kZAxis);
    ~AcDbSpline() override;

    bool isClosed() const override { return m_closed; }
    const AcGePoint3dArray& vertices() const { return m_vertices; }
    const AcGeDoubleArray& bulges() const { return m_bulges; }

    std::optional<veldrin::CurvePath> path() const override;

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

protected:
    const veldrin::CurvePath* keptPath() const override;
    bool subWorldDraw(AcGiWorldDraw* draw) override;
    void subList() const override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    Acad::ErrorStatus subExplode(std::vector<AcDbEntity*>& pieces) const override;

private:
    void followDefinition();
    Acad::ErrorStatus transformDefinition(const AcGeMatrix3d& matrix);

    veldrin::ResbufPtr m_exchange; // null for one that was made from a polyline
    AcGePoint3dArray m_vertices;
    AcGeDoubleArray m_bulges;
    bool m_closed = false;
    AcGeVector3d m_normal{0.0, 0.0, 1.0};
    mutable std::optional<veldrin::CurvePath> m_path; // built when first asked for; dropped by a change
};
