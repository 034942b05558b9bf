#pragma once

#include "arrow/PlumbPipeArrow.h"

namespace plumb {

// The run that an arrow lies along, in plan.
class ArrowRun {
public:
    explicit ArrowRun(const ArrowData& data);

    double angle() const { return m_angle; }
    // Of the wings: the stored one, or half the run where it is longer than the run.
    double arrowLength() const { return m_arrowLength; }
    AcGePoint3d tail() const;
    AcGePoint3d head() const;
    // Where a hanger stands, on the run's slope. False for one that lies past the run, or is no number.
    bool hangerPoint(double distance, AcGePoint3d& point) const;

private:
    const ArrowData& m_data;
    double m_length;
    double m_angle;
    double m_arrowLength;
};

} // namespace plumb
