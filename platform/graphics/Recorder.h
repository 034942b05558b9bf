#pragma once

#include "graphics/DisplayList.h"

namespace veldrin {

// The sink that writes down what is drawn. Points and arcs are kept as they were given.
class VELDRIN_API Recorder final : public SinkBase {
public:
    // Appends to the list, which must outlive the recorder.
    explicit Recorder(DisplayList& list) : m_list(list) {}

    // Empties the list, keeping its memory, and begins anew with default traits.
    void restart();

protected:
    void putPolyline(std::span<const AcGePoint3d> points) override;
    void putPolygon(std::span<const AcGePoint3d> points) override;
    void putCircle(const AcGePoint3d& center, double radius, const AcGeVector3d& normal) override;
    void putArc(const AcGePoint3d& center, double radius, const AcGeVector3d& normal,
                const AcGeVector3d& startVector, double sweep, AcGiArcType type) override;
    void putText(const AcGiText& text) override;
    void putFittedCurve(const AcGiFittedCurve& curve) override;

private:
    std::uint32_t traitsIndex();
    void begin(PrimitiveKind kind, std::size_t pointCount);
    void addPoints(std::span<const AcGePoint3d> points);

    DisplayList& m_list;
    std::uint32_t m_traitsIndex = 0;
};

} // namespace veldrin
