#pragma once

#include "drawing/AcDbEntity.h"

#include <vector>

namespace plumb {

// The stored fields of an arrow. Lengths are inches.
struct ArrowData {
    AcGePoint3d ptStart; // of the run, in space
    AcGePoint3d ptEnd;
    Adesk::Int32 ixPipe = 0;             // row of the pipe in the project's table
    double dArrowLength = 12.0;          // of the wings
    std::vector<double> hangerDistances; // along the run in plan; a negative one is drawn as a cross
    double dTailOffset = 0.0;            // by which the tail stands in from ptStart
    double dHeadOffset = 0.0;            // and the head from ptEnd
    bool bReverseArrows = false;         // the arrow stands at the tail and points towards ptStart
};

// The direction of flow along a pipe's run, as an open arrowhead, and the run's hangers. It draws no line of
// its own: that is the pipe's, which knows nothing of its arrow; the two share an ixPipe.
//
// A hanger that lies past the run's end is kept and not shown until the run is long enough. With two ends at
// one place in plan there is neither arrow nor hanger, just the line between them.
class PlumbPipeArrow : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(PlumbPipeArrow); // rxInit registers the class; see unregister
    static void unregister();             // living arrows become proxies

    PlumbPipeArrow();
    ~PlumbPipeArrow() override;

    // The stored fields, for reading; and for writing, which files the state before.
    const ArrowData& data() const {
        assertReadEnabled();
        return m_data;
    }
    ArrowData& edit() {
        assertWriteEnabled();
        return m_data;
    }
    void setStart(const AcGePoint3d& point);
    void setEnd(const AcGePoint3d& point);

    // ---- What the host calls
    Acad::ErrorStatus audit(AcDbAuditInfo* info) override;
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override; // the two ends alone
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

protected:
    bool subWorldDraw(AcGiWorldDraw* draw) override;
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override; // the two ends alone
    void subList() const override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    Acad::ErrorStatus subExplode(std::vector<AcDbEntity*>& pieces) const override; // refused
    // The hangers, for ends and middles; other modes are refused.
    Acad::ErrorStatus subGetOsnapPoints(AcDb::OsnapMode mode, Adesk::GsMarker marker,
                                        const AcGePoint3d& pickPoint, const AcGePoint3d& lastPoint,
                                        const AcGeMatrix3d& viewTransform, AcGePoint3dArray& snapPoints,
                                        AcGeIntArray& geomIds) const override;

private:
    bool isVerticalInPlan() const; // its ends are one point on the sheet

    ArrowData m_data;
};

} // namespace plumb
