#include "pipe/PipePicture.h"
#include "pipe/PlumbPipe.h"

namespace plumb {

bool PlumbPipe::subWorldDraw(AcGiWorldDraw* draw) {
    assertReadEnabled();
    return buildGraphics(draw, nullptr);
}

Adesk::UInt32 PlumbPipe::subViewportDrawLogicalFlags(AcGiViewportDraw*) {
    return 0;
}

void PlumbPipe::buildEntityList(CList<AcDbEntity*>* list) const {
    assertReadEnabled();
    buildGraphics(nullptr, list);
}

bool PlumbPipe::buildGraphics(AcGiWorldDraw* draw, CList<AcDbEntity*>* list) const {
    PipePicture picture(*this, PipeSink{draw, list});
    // Elevations play no part: two ends above each other are a riser.
    if (planDistance(m_data.ptStart, m_data.ptEnd) > kVerticalLimit)
        picture.drawPlanPipe();
    else
        picture.drawVerticalPipe();
    return true;
}

} // namespace plumb
