#pragma once

#include "drawing/AcDbPathCurve.h"

namespace AcDb {
enum Poly2dType { k2dSimplePoly = 0, k2dFitCurvePoly = 1, k2dQuadSplinePoly = 2, k2dCubicSplinePoly = 3 };
}

// A polyline in one plane whose pieces are straight or arcs (bulge: tan of a quarter of the sweep, positive
// counter-clockwise). A fitted one passes smoothly through its points: each pair of neighbours is joined by
// two arcs, so that it holds further vertices between those it was built from. The parameter counts pieces.
class VELDRIN_API AcDb2dPolyline : public veldrin::PathCurve {
public:
    ACRX_DECLARE_MEMBERS(AcDb2dPolyline);

    AcDb2dPolyline();
    AcDb2dPolyline(AcDb::Poly2dType type, const AcGePoint3dArray& vertices, double elevation = 0.0,
                   bool closed = false, double defaultStartWidth = 0.0, double defaultEndWidth = 0.0,
                   const AcGeDoubleArray* bulges = nullptr, const AcGeIntArray* vertexIdentifiers = nullptr);
    ~AcDb2dPolyline() override;

    AcDb::Poly2dType polyType() const { return m_type; }
    bool isClosed() const override { return m_closed; }
    // Of all vertices. Without one of its own, a polyline lies at the height of its first vertex.
    double elevation() const { return m_elevation; }
    Acad::ErrorStatus setElevation(double elevation);
    AcGeVector3d normal() const { return m_normal; }
    Acad::ErrorStatus setClosed(bool closed);
    // At the end; the height is the polyline's, the first vertex's when it had none.
    Acad::ErrorStatus appendVertex(const AcGePoint3d& point, double bulge = 0.0);
    Acad::ErrorStatus appendVertices(const AcGePoint3dArray& points, const AcGeDoubleArray& bulges);
    double length() const;
    // The points that it was built from, and what is drawn: the same but for a fitted one. In the world.
    const AcGePoint3dArray& definition() const { return m_definition; }
    const AcGePoint3dArray& vertices() const { return m_vertices; }
    const AcGeDoubleArray& bulges() const { return m_bulges; } // one a vertex

    using AcDbCurve::getSpline;
    Acad::ErrorStatus getSpline(AcDbSpline*& spline) const override;
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
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& points, AcGeIntArray& osnapModes,
                                       AcGeIntArray& geomIds) const override;
    Acad::ErrorStatus subMoveGripPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) override;

private:
    void fit(); // makes vertices and bulges from the definition
    bool hasArcs() const;
    void setHeights();

    AcDb::Poly2dType m_type = AcDb::k2dSimplePoly;
    bool m_closed = false;
    double m_elevation = 0.0;
    AcGeVector3d m_normal{0.0, 0.0, 1.0};
    mutable std::optional<veldrin::CurvePath> m_path; // built when first asked for; dropped by a change
    AcGePoint3dArray m_definition;
    AcGePoint3dArray m_vertices;
    AcGeDoubleArray m_bulges;
};
