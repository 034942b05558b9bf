#include "arrow/ArrowRun.h"
#include "drawing/AcGi.h"
#include "pipe/PipeConstants.h"
#include "util/PlaneGeometry.h"

namespace plumb {

namespace {

constexpr double kWingAngle = 0.39269908125; // an eighth of kPi
constexpr double kHangerShare = 0.25;        // half of a mark across the run, share of the wings' length
constexpr double kCrossShare = 0.025;        // half of a cross along the run

// Everything that an arrow shows is a line between two points. Sizes that are no numbers show nothing.
class ArrowPicture {
public:
    ArrowPicture(AcGiWorldGeometry& geometry, const ArrowData& data)
        : m_geometry(geometry), m_data(data), m_run(data) {}

    void draw() {
        if (!std::isfinite(m_run.arrowLength())) return;
        drawWings();
        for (const double distance : m_data.hangerDistances) drawHanger(distance);
    }

    void line(const AcGePoint3d& a, const AcGePoint3d& b) {
        const AcGePoint3d points[2] = {a, b};
        m_geometry.polyline(2, points);
    }

private:
    void drawWings() {
        const AcGePoint3d tip = m_data.bReverseArrows ? m_run.tail() : m_run.head();
        const double back = m_data.bReverseArrows ? m_run.angle() : m_run.angle() + kPi;
        line(tip, PolarPoint(tip, back - kWingAngle, m_run.arrowLength()));
        line(tip, PolarPoint(tip, back + kWingAngle, m_run.arrowLength()));
    }

    void drawHanger(double distance) {
        AcGePoint3d center;
        if (!m_run.hangerPoint(distance, center)) return;
        const double reach = kHangerShare * m_run.arrowLength();
        const AcGePoint3d p = PolarPoint(center, m_run.angle() + kQuarterTurn, reach);
        const AcGePoint3d q = PolarPoint(center, m_run.angle() - kQuarterTurn, reach);
        if (!(distance < 0.0)) return line(p, q);
        const double slant = kCrossShare * m_run.arrowLength();
        const auto along = [&](const AcGePoint3d& point, double step) {
            return PolarPoint(point, m_run.angle(), step);
        };
        line(along(p, slant), along(q, -slant));
        line(along(p, -slant), along(q, slant));
    }

    AcGiWorldGeometry& m_geometry;
    const ArrowData& m_data;
    ArrowRun m_run;
};

} // namespace

bool PlumbPipeArrow::subWorldDraw(AcGiWorldDraw* draw) {
    const ArrowData& d = data();
    ArrowPicture picture(draw->geometry(), d);
    if (isVerticalInPlan())
        picture.line(d.ptStart, d.ptEnd);
    else
        picture.draw();
    return true;
}

Acad::ErrorStatus PlumbPipeArrow::subGetOsnapPoints(AcDb::OsnapMode mode, Adesk::GsMarker, const AcGePoint3d&,
                                                    const AcGePoint3d&, const AcGeMatrix3d&,
                                                    AcGePoint3dArray& snapPoints, AcGeIntArray&) const {
    const ArrowData& d = data();
    if (mode != AcDb::kOsModeEnd && mode != AcDb::kOsModeMid) return Acad::eInvalidInput;
    const ArrowRun run(d);
    for (const double distance : d.hangerDistances) {
        AcGePoint3d point;
        if (run.hangerPoint(distance, point)) snapPoints.push_back(point);
    }
    return Acad::eOk;
}

} // namespace plumb
