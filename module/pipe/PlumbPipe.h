#pragma once

#include "drawing/AcDbCurve.h"
#include "drawing/AcDbMText.h"
#include "pipe/PipeData.h"
#include "runtime/CList.h"

#include <memory>

namespace plumb {

// One straight run of pipe, and all that is drawn at its ends.
//
// To the host it is a straight line in space, with the distance from its start as parameter. Everything else
// that a user sees (offsets, elbows, arcs, ticks, trap, riser, labels, gaps) is derived from PipeData each
// time that it is drawn; nothing is kept. See PipePicture.
//
// Elevation is data, not geometry: what comes from the host's editors (transform, grips, stretch, extend)
// moves the ends in plan and leaves their Z alone.
class PlumbPipe : public AcDbCurve {
public:
    ACRX_DECLARE_MEMBERS(PlumbPipe); // rxInit registers the class; see unregister
    static void unregister();        // living pipes become proxies

    PlumbPipe();
    ~PlumbPipe() override;

    // The stored fields, for reading; and for writing, which files the state before.
    const PipeData& data() const {
        assertReadEnabled();
        return m_data;
    }
    PipeData& edit() {
        assertWriteEnabled();
        return m_data;
    }
    // Height, style and set width of the label; filed with the pipe.
    const AcDbMText& labelText() const { return m_mtext; }
    AcDbMText& labelText() {
        assertWriteEnabled();
        return m_mtext;
    }
    // The label as it is drawn, which fitLabel sets up. It is no part of the pipe's state: drawing leaves
    // what is filed as it was.
    AcDbMText& drawnLabel() const;

    const AcGePoint3d& start() const { return data().ptStart; }
    const AcGePoint3d& end() const { return data().ptEnd; }
    // Without Z the stored elevation stays.
    void setStart(const AcGePoint3d& point, bool withZ);
    void setEnd(const AcGePoint3d& point, bool withZ);
    void setIxPipe(Adesk::Int32 ixPipe);
    void setBreakWidth(double width);
    void setVerticalRadius(double radius);
    void setTextStyle(AcDbObjectId style);

    // A list takes a position once and stays in order.
    void addPipeBreak(double position);
    void addPtrapLine1Break(double position);
    void addPtrapPolylineBreak(double position);
    void addPtrapLine2Break(double position);
    void addElbow(const elbowInfo& elbow);
    void addArc(const arcInfo& arc);
    // Ten slots in order, the largest falls off. Throws CInvalidArgException for an index that does not
    // exist.
    void addElbowBreak(Adesk::Int32 index, double position);
    void addArcBreak(Adesk::Int32 index, double position);
    void clearElbowBreaks();
    void clearArcBreaks();

    // What the pipe's turns take up from its end: the larger of its longest elbow and its longest arc.
    double elbowLength() const;
    // Distance from a label's centre to where the line stops; 0 without a label.
    double labelHalfGap() const;

    // The picture as entities in model space, closed; the list does not own them.
    void buildEntityList(CList<AcDbEntity*>* list) const;

    // ---- What the host calls
    Acad::ErrorStatus audit(AcDbAuditInfo* info) override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

    Acad::ErrorStatus getStartParam(double& param) const override;
    Acad::ErrorStatus getEndParam(double& param) const override;
    Acad::ErrorStatus getStartPoint(AcGePoint3d& point) const override;
    Acad::ErrorStatus getEndPoint(AcGePoint3d& point) const override;
    Acad::ErrorStatus getPointAtParam(double param, AcGePoint3d& point) const override;
    Acad::ErrorStatus getParamAtPoint(const AcGePoint3d& point, double& param) const override;
    Acad::ErrorStatus getDistAtParam(double param, double& dist) const override;
    Acad::ErrorStatus getParamAtDist(double dist, double& param) const override;
    // Straight from the start, with no projection.
    Acad::ErrorStatus getDistAtPoint(const AcGePoint3d& point, double& dist) const override;
    Acad::ErrorStatus getPointAtDist(double dist, AcGePoint3d& point) const override;
    // A negative parameter moves the start there, any other the end.
    Acad::ErrorStatus extend(double newParam) override;
    Acad::ErrorStatus extend(bool extendStart, const AcGePoint3d& toPoint) override;

protected:
    bool subWorldDraw(AcGiWorldDraw* draw) override;
    Adesk::UInt32 subViewportDrawLogicalFlags(AcGiViewportDraw* draw) override;
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override; // the two ends alone
    void subList() const override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    Acad::ErrorStatus subExplode(std::vector<AcDbEntity*>& pieces) const override; // refused
    Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& points, AcGeIntArray& osnapModes,
                                       AcGeIntArray& geomIds) const override;
    Acad::ErrorStatus subMoveGripPointsAt(const AcGeIntArray& indices, const AcGeVector3d& offset) override;
    Acad::ErrorStatus subGetStretchPoints(AcGePoint3dArray& points) const override;
    Acad::ErrorStatus subMoveStretchPointsAt(const AcGeIntArray& indices,
                                             const AcGeVector3d& offset) override;
    Acad::ErrorStatus subGetOsnapPoints(AcDb::OsnapMode mode, Adesk::GsMarker marker,
                                        const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
                                        const AcGeMatrix3d& viewTransform, AcGePoint3dArray& snapPoints,
                                        AcGeIntArray& geomIds) const override;
    Acad::ErrorStatus subIntersectWith(const AcDbEntity* other, AcDb::Intersect mode,
                                       AcGePoint3dArray& points, Adesk::GsMarker thisMarker,
                                       Adesk::GsMarker otherMarker) const override;
    Acad::ErrorStatus subIntersectWith(const AcDbEntity* other, AcDb::Intersect mode, const AcGePlane& plane,
                                       AcGePoint3dArray& points, Adesk::GsMarker thisMarker,
                                       Adesk::GsMarker otherMarker) const override;

private:
    // One of the two sinks is set; with none nothing is produced.
    bool buildGraphics(AcGiWorldDraw* draw, CList<AcDbEntity*>* list) const;
    bool isVerticalInPlan() const; // its ends are one point on the sheet
    void appendSnapEnds(AcGePoint3dArray& snapPoints) const;
    Acad::ErrorStatus appendClosest(const AcGePoint3d& to, AcGePoint3dArray& snapPoints) const;

    PipeData m_data;
    AcDbMText m_mtext;
    mutable std::unique_ptr<AcDbMText> m_drawnLabel; // there is none before the first label
};

} // namespace plumb
