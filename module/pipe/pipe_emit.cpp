#include "pipe/PipePicture.h"
#include "pipe/PlumbPipe.h"

#include "drawing/AcDbArc.h"
#include "drawing/AcDbCircle.h"
#include "drawing/AcDbLayerTable.h"
#include "util/DrawingHelpers.h"

namespace plumb {

namespace {
AcGePoint3d hidden(const AcGePoint3d& p) {
    return {p.x, p.y, kHiddenElevation};
}

AcDbArc* makeArc(const AcGePoint3d& startPoint, const AcGePoint3d& center, double radius, int direction,
                 double sweep) {
    const double a = AngleBetween(center, startPoint);
    return direction == 1 ? new AcDbArc(center, radius, a, a + sweep)
                          : new AcDbArc(center, radius, a - sweep, a);
}
} // namespace

PipePicture::PipePicture(const PlumbPipe& pipe, PipeSink sink)
    : m_pipe(pipe)
    , m_data(pipe.data())
    , m_sink(sink)
    , m_layer(pipe.layerId())
    , m_linetype(pipe.linetypeId())
    , m_hasTwins(m_data.hiddenLayerId.isValid())
    , m_frame(m_data.ptStart, m_data.ptEnd) {
    if (sink.draw) {
        m_geometry = &sink.draw->geometry();
        m_traits = &sink.draw->subEntityTraits();
        m_layer = m_traits->layerId();
        m_linetype = m_traits->lineTypeId();
    }
    m_hiddenLinetype = m_linetype;
    if (!m_hasTwins) return;
    const AcDbObjectPointer<AcDbLayerTableRecord> layer(m_data.hiddenLayerId);
    if (layer) m_hiddenLinetype = layer->linetypeObjectId();
}

void PipePicture::beginTwin() {
    m_traits->setLayer(m_data.hiddenLayerId);
    m_traits->setLineType(m_hiddenLinetype);
}

void PipePicture::endTwin() {
    m_traits->setLayer(m_layer);
    m_traits->setLineType(m_linetype);
}

void PipePicture::emitLineFully(const AcGePoint3d& a, const AcGePoint3d& b, TwinLinetype twin) {
    if (m_geometry) {
        const AcGePoint3d points[2] = {a, b};
        if (m_hasTwins) {
            const AcGePoint3d twins[2] = {hidden(a), hidden(b)};
            beginTwin();
            m_geometry->polyline(2, twins);
            endTwin();
        }
        m_geometry->polyline(2, points);
    } else if (m_sink.list) {
        if (m_hasTwins) {
            auto* line = new AcDbLine(hidden(a), hidden(b));
            if (twin == TwinLinetype::OfPipe) line->setLinetype(m_pipe.linetypeId(), true);
            addHiddenEntity(line);
        }
        addEntity(new AcDbLine(a, b));
    }
}

void PipePicture::emitArc(const AcGePoint3d& startPoint, const AcGePoint3d& center, double radius,
                          int direction, double sweep) {
    if (m_geometry) {
        const AcGeVector3d normal(0.0, 0.0, direction == 1 ? 1.0 : -1.0);
        const AcGeVector3d toStart(startPoint.x - center.x, startPoint.y - center.y, 0.0);
        if (m_hasTwins) {
            beginTwin();
            m_geometry->circularArc(hidden(center), radius, normal, toStart, sweep, kAcGiArcSimple);
            endTwin();
        }
        m_geometry->circularArc(center, radius, normal, toStart, sweep, kAcGiArcSimple);
    } else if (m_sink.list) {
        if (m_hasTwins) addHiddenEntity(makeArc(startPoint, hidden(center), radius, direction, sweep));
        addEntity(makeArc(startPoint, center, radius, direction, sweep));
    }
}

void PipePicture::emitCircle(const AcGePoint3d& center, double radius) {
    if (m_geometry) {
        if (m_hasTwins) {
            beginTwin();
            m_geometry->circle(hidden(center), radius, AcGeVector3d::kZAxis);
            endTwin();
        }
        m_geometry->circle(center, radius, AcGeVector3d::kZAxis);
    } else if (m_sink.list) {
        if (m_hasTwins) addHiddenEntity(new AcDbCircle(hidden(center), AcGeVector3d::kZAxis, radius));
        addEntity(new AcDbCircle(center, AcGeVector3d::kZAxis, radius));
    }
}

void PipePicture::addHiddenEntity(AcDbEntity* entity) {
    entity->setLayer(m_data.hiddenLayerId, true, false);
    append(entity);
}

void PipePicture::addEntity(AcDbEntity* entity) {
    entity->setLayer(m_pipe.layerId(), true, false);
    entity->setLinetype(m_pipe.linetypeId(), true);
    append(entity);
}

void PipePicture::append(AcDbEntity* entity) {
    // What was not appended is gone, and the user has been told.
    if (appendAndClose(entity)) m_sink.list->AddTail(entity);
}

} // namespace plumb
