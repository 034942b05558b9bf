#pragma once

#include "drawing/AcDbPathCurve.h"

// A polyline in one plane whose vertices are points of that plane: with a bulge each (tan of a quarter of the
// sweep of the piece behind it, positive counter-clockwise) and a width at the start and the end of the
// piece. The parameter counts pieces. Indices beyond the last vertex are eInvalidIndex.
class VELDRIN_API AcDbPolyline : public veldrin::PathCurve {
public:
    ACRX_DECLARE_MEMBERS(AcDbPolyline);

    AcDbPolyline();
    ~AcDbPolyline() override;

    unsigned numVerts() const { return static_cast<unsigned>(m_vertices.size()); }
    // In the world, and in the plane.
    Acad::ErrorStatus getPointAt(unsigned index, AcGePoint3d& point) const;
    Acad::ErrorStatus getPointAt(unsigned index, AcGePoint2d& point) const;
    Acad::ErrorStatus setPointAt(unsigned index, const AcGePoint2d& point);
    Acad::ErrorStatus getBulgeAt(unsigned index, double& bulge) const;
    Acad::ErrorStatus setBulgeAt(unsigned index, double bulge);
    Acad::ErrorStatus getWidthsAt(unsigned index, double& start, double& end) const;
    Acad::ErrorStatus setWidthsAt(unsigned index, double start, double end);
    // In front of the vertex with that index; an index equal to their number appends.
    Acad::ErrorStatus addVertexAt(unsigned index, const AcGePoint2d& point, double bulge = 0.0,
                                  double startWidth = 0.0, double endWidth = 0.0);
    Acad::ErrorStatus removeVertexAt(unsigned index); // two at least stay
    Acad::ErrorStatus setConstantWidth(double width);
    bool hasWidth() const;
    bool isClosed() const override { return m_closed; }
    Acad::ErrorStatus setClosed(bool closed);
    double elevation() const { return m_elevation; }
    Acad::ErrorStatus setElevation(double elevation);
    AcGeVector3d normal() const { return m_normal; }
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal); // keeps the points of the plane
    double length() const { return keptPath()->length(); }

    std::optional<veldrin::CurvePath> path() const override { return *keptPath(); }
    using AcDbCurve::getSpline;
    Acad::ErrorStatus getSpline(AcDbSpline*& spline) const override;

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
    struct Vertex {
        AcGePoint2d point;
        double bulge = 0.0;
        double startWidth = 0.0;
        double endWidth = 0.0;
    };

    AcGePoint3d worldPoint(const AcGePoint2d& point) const;
    AcGePoint3dArray worldPoints() const;
    AcGeDoubleArray bulges() const;
    bool hasArcs() const;
    std::optional<double> constantWidth() const; // of all pieces, if they agree
    void drawWidePieces(AcGiWorldDraw& draw) const;

    std::vector<Vertex> m_vertices;
    bool m_closed = false;
    bool m_linetypeGoesOn = false; // past the vertices; else it begins anew at each
    double m_elevation = 0.0;
    AcGeVector3d m_normal{0.0, 0.0, 1.0};
    mutable std::optional<veldrin::CurvePath> m_path; // built when first asked for; dropped by a change
};
