#pragma once

#include "graphics/SinkBase.h"

#include <cstdint>

namespace veldrin {

// Draws nowhere and counts what came: the cost of the entities alone.
class VELDRIN_API NullSink final : public SinkBase {
public:
    std::uint64_t primitives() const { return m_primitives; }

protected:
    void putPolyline(std::span<const AcGePoint3d>) override { ++m_primitives; }
    void putPolygon(std::span<const AcGePoint3d>) override { ++m_primitives; }
    void putCircle(const AcGePoint3d&, double, const AcGeVector3d&) override { ++m_primitives; }
    void putArc(const AcGePoint3d&, double, const AcGeVector3d&, const AcGeVector3d&, double,
                AcGiArcType) override {
        ++m_primitives;
    }
    void putText(const AcGiText&) override { ++m_primitives; }
    void putFittedCurve(const AcGiFittedCurve&) override { ++m_primitives; }

private:
    std::uint64_t m_primitives = 0;
};

} // namespace veldrin
