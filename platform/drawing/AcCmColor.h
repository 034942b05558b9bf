#pragma once

#include <cstdint>

// A colour as entities and layers carry it: an index from the drawing palette, a true colour, or where it
// comes from.
class AcCmColor {
public:
    static constexpr std::int16_t kByBlock = 0;
    static constexpr std::int16_t kByLayer = 256;
    static constexpr std::int16_t kForeground = 7;

    AcCmColor() = default;
    explicit AcCmColor(std::int16_t index) : m_index(index) {}

    std::int16_t colorIndex() const { return m_index; }
    void setColorIndex(std::int16_t index) {
        m_index = index;
        m_hasRgb = false;
    }
    bool isByColor() const { return m_hasRgb; }
    bool isByLayer() const { return !m_hasRgb && m_index == kByLayer; }
    bool isByBlock() const { return !m_hasRgb && m_index == kByBlock; }
    std::uint32_t rgb() const { return m_rgb; } // 0xRRGGBB, meaningful with isByColor
    // The index is what programs without true colours show.
    void setRGB(std::uint32_t rgb, std::int16_t nearestIndex) {
        m_rgb = rgb & 0xFFFFFFU;
        m_index = nearestIndex;
        m_hasRgb = true;
    }
    bool operator==(const AcCmColor&) const = default;

private:
    std::uint32_t m_rgb = 0;
    std::int16_t m_index = kByLayer;
    bool m_hasRgb = false;
};
