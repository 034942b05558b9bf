#pragma once

#include "drawing/AcDbMText.h"
#include "drawing/AcGi.h"
#include "pipe/PipeBreaks.h"
#include "pipe/PlanPoints.h"
#include "runtime/CList.h"

namespace plumb {

class PlumbPipe;

// Where a picture goes. With a view, primitives are drawn; without one, entities are made for the list, in
// model space and closed; without either, nothing is produced.
struct PipeSink {
    AcGiWorldDraw* draw = nullptr;
    CList<AcDbEntity*>* list = nullptr;
};

// What a label takes up, measured once a draw. Angles in the world.
struct LabelFit {
    double width = 0.0;
    double height = 0.0;
    double rotation = 0.0;
    double halfGap = 0.0; // from its centre to where the line stops
};

// One picture of one pipe, from its stored fields to the sink. Every straight piece passes emitLine, every
// arc emitArc: these give each its twin on the hidden layer, directly before it and at the hidden elevation.
//
// Order: trap (curve, line 1, line 2), run with ticks and labels, drop line, elbows, arcs.
class PipePicture {
public:
    PipePicture(const PlumbPipe& pipe, PipeSink sink);

    void drawPlanPipe();
    void drawVerticalPipe();

private:
    // Whose linetype a twin gets when it becomes an entity.
    enum class TwinLinetype { NotSet, OfPipe };

    // pipe_emit.cpp
    void emitLine(const AcGePoint3d& a, const AcGePoint3d& b, TwinLinetype twin = TwinLinetype::NotSet) {
        if (m_geometry && !m_hasTwins) {
            const AcGePoint3d points[2] = {a, b};
            m_geometry->polyline(2, points);
        } else {
            emitLineFully(a, b, twin);
        }
    }
    void emitLineFully(const AcGePoint3d& a, const AcGePoint3d& b, TwinLinetype twin);
    void emitArc(const AcGePoint3d& startPoint, const AcGePoint3d& center, double radius, int direction,
                 double sweep);
    void emitCircle(const AcGePoint3d& center, double radius);
    void beginTwin();
    void endTwin();
    void addEntity(AcDbEntity* entity);       // on the pipe's layer and linetype
    void addHiddenEntity(AcDbEntity* entity); // on the hidden layer, its linetype as it is
    void append(AcDbEntity* entity);

    // pipe_plan.cpp
    void drawRun();
    void drawDropLine();
    void drawElbows();
    void drawArcs();
    void drawBrokenArc(const arcInfo& arc, const AcGePoint3d& first, const AcGePoint3d& center);

    // pipe_ticks.cpp
    void emitTick(const AcGePoint3d& center);
    void emitHeadTick(AcGePoint3d& from);
    void emitTailTick(AcGePoint3d& to);
    void emitWholeRun();
    void emitBrokenRun();

    // pipe_ptrap.cpp
    void drawPtrap();
    void drawPtrapCurve(AcGePoint3dArray& points);
    void drawBrokenPtrapCurve(const AcDbCurve& curve, double length, GapMerger gaps);
    void emitCurveRange(const AcDbCurve& curve, double from, double to, double length);
    // A leg of the trap from its origin along Y; gives whether it begins with a piece.
    bool drawPtrapLine(const AcGePoint3d& from, const AcGePoint3d& to, double alongY,
                       const BreakList& breaks);

    // pipe_label.cpp
    void prepareLabel();
    void emitRunPiece(const AcGePoint3d& a, const AcGePoint3d& b);
    void emitLabel(const AcGePoint3d& center);

    GapMerger gaps(const BreakList& breaks) const {
        return {breaks, m_data.dBreakWidth, GapMerger::kTakeZeros};
    }
    GapMerger gaps(const BreakSlots& breaks) const {
        return {breaks, m_data.dBreakWidth, GapMerger::kSkipZeros};
    }

    const PlumbPipe& m_pipe;
    const PipeData& m_data;
    PipeSink m_sink;
    AcGiWorldGeometry* m_geometry = nullptr; // of the view, null when listing
    AcGiSubEntityTraits* m_traits = nullptr;
    AcDbObjectId m_layer; // what the view had at first, or the pipe's own
    AcDbObjectId m_linetype;
    AcDbObjectId m_hiddenLinetype;
    bool m_hasTwins;

    PlanFrame m_frame;
    PlanPoints m_points;
    LabelFit m_label;
    bool m_trapStartBroken = false; // the trap's first gap begins at or above its top
};

// Sets the pipe's drawn label up for its present fields and measures it. Nothing to do without a text.
LabelFit fitLabel(const PlumbPipe& pipe);

// An angle in the world as AcDbMText::setRotation takes it, which counts from the current user system.
double angleToUcs(double angle);

} // namespace plumb
