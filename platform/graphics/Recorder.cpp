#include "graphics/Recorder.h"

namespace veldrin {

void Recorder::restart() {
    m_list.clear();
    m_traitsIndex = 0;
    resetTraits();
}

// Entities go to another layer for a twin and come back, so the set before the last is worth a look too.
std::uint32_t Recorder::traitsIndex() {
    auto& known = m_list.m_traits;
    if (!takeMoved() && !known.empty()) return m_traitsIndex;
    constexpr std::size_t kLookBack = 2;
    for (std::size_t back = 1; back <= kLookBack && back <= known.size(); ++back)
        if (known[known.size() - back] == traits())
            return m_traitsIndex = static_cast<std::uint32_t>(known.size() - back);
    known.push_back(traits());
    return m_traitsIndex = static_cast<std::uint32_t>(known.size() - 1);
}

void Recorder::begin(PrimitiveKind kind, std::size_t pointCount) {
    m_list.m_primitives.push_back({kind, traitsIndex(), static_cast<std::uint32_t>(m_list.m_points.size()),
                                   static_cast<std::uint32_t>(pointCount),
                                   static_cast<std::uint32_t>(m_list.m_numbers.size())});
}

void Recorder::addPoints(std::span<const AcGePoint3d> points) {
    m_list.m_points.insert(m_list.m_points.end(), points.begin(), points.end());
}

void Recorder::putPolyline(std::span<const AcGePoint3d> points) {
    begin(PrimitiveKind::kPolyline, points.size());
    addPoints(points);
}

void Recorder::putPolygon(std::span<const AcGePoint3d> points) {
    begin(PrimitiveKind::kPolygon, points.size());
    addPoints(points);
}

void Recorder::putCircle(const AcGePoint3d& center, double radius, const AcGeVector3d& normal) {
    begin(PrimitiveKind::kCircle, 1);
    m_list.m_points.push_back(center);
    const double numbers[] = {radius, normal.x, normal.y, normal.z};
    m_list.m_numbers.insert(m_list.m_numbers.end(), std::begin(numbers), std::end(numbers));
}

void Recorder::putArc(const AcGePoint3d& center, double radius, const AcGeVector3d& normal,
                      const AcGeVector3d& startVector, double sweep, AcGiArcType type) {
    begin(PrimitiveKind::kArc, 1);
    m_list.m_points.push_back(center);
    const double numbers[] = {radius,        normal.x,      normal.y,
                              normal.z,      startVector.x, startVector.y,
                              startVector.z, sweep,         static_cast<double>(type)};
    m_list.m_numbers.insert(m_list.m_numbers.end(), std::begin(numbers), std::end(numbers));
}

void Recorder::putText(const AcGiText& text) {
    begin(PrimitiveKind::kText, 0);
    m_list.m_primitives.back().firstNumber = static_cast<std::uint32_t>(m_list.m_textCount);
    if (m_list.m_textCount == m_list.m_texts.size())
        m_list.m_texts.push_back(text);
    else
        m_list.m_texts[m_list.m_textCount] = text;
    ++m_list.m_textCount;
}

void Recorder::putFittedCurve(const AcGiFittedCurve& curve) {
    begin(PrimitiveKind::kFittedCurve, curve.definition.size() + curve.vertices.size());
    addPoints(curve.definition);
    addPoints(curve.vertices);
    const double head[] = {static_cast<double>(curve.definition.size()), curve.closed ? 1.0 : 0.0,
                           curve.normal.x, curve.normal.y, curve.normal.z};
    m_list.m_numbers.insert(m_list.m_numbers.end(), std::begin(head), std::end(head));
    m_list.m_numbers.insert(m_list.m_numbers.end(), curve.bulges.begin(), curve.bulges.end());
}

} // namespace veldrin
