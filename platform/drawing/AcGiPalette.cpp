#include "drawing/AcGiPalette.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

namespace veldrin {

namespace {

constexpr std::uint32_t packed(int r, int g, int b) {
    return static_cast<std::uint32_t>((r << 16) | (g << 8) | b);
}

constexpr std::array<std::uint32_t, 10> kBasic{0xFFFFFF, 0xFF0000, 0xFFFF00, 0x00FF00, 0x00FFFF,
                                               0x0000FF, 0xFF00FF, 0xFFFFFF, 0x808080, 0xC0C0C0};
constexpr std::array<std::uint32_t, 6> kGreys{0x333333, 0x505050, 0x696969, 0x828282, 0xBEBEBE, 0xFFFFFF};
constexpr int kFirstHue = 10;
constexpr int kFirstGrey = 250;
constexpr int kLast = 255;

// Share of a channel (0: red, 1: green, 2: blue) at a place on the wheel of 24 hues.
double share(int hue, int channel) {
    const int away = std::abs((hue - 8 * channel + 12 + 24) % 24 - 12);
    return std::clamp((8.0 - away) / 4.0, 0.0, 1.0);
}

std::uint32_t wheelColor(int index) {
    constexpr std::array<double, 5> kShades{255.0, 165.0, 127.0, 76.0, 38.0};
    const int hue = (index - kFirstHue) / 10;
    const int step = index % 10;
    const double shade = kShades[static_cast<std::size_t>(step / 2)];
    const bool pale = step % 2 != 0;
    std::array<int, 3> rgb{};
    for (int channel = 0; channel < 3; ++channel) {
        const double part = share(hue, channel);
        rgb[static_cast<std::size_t>(channel)] =
            static_cast<int>(std::floor(shade * (pale ? 0.5 + part / 2.0 : part)));
    }
    return packed(rgb[0], rgb[1], rgb[2]);
}

int distance(std::uint32_t a, std::uint32_t b) {
    int sum = 0;
    for (const int shift : {0, 8, 16}) {
        const int d = static_cast<int>((a >> shift) & 0xFF) - static_cast<int>((b >> shift) & 0xFF);
        sum += d * d;
    }
    return sum;
}

} // namespace

std::uint32_t paletteColor(int index) {
    if (index <= 0 || index > kLast) return kBasic[0];
    if (index < kFirstHue) return kBasic[static_cast<std::size_t>(index)];
    if (index >= kFirstGrey) return kGreys[static_cast<std::size_t>(index - kFirstGrey)];
    return wheelColor(index);
}

std::int16_t nearestIndex(std::uint32_t rgb) {
    int best = 1;
    for (int index = 2; index <= kLast; ++index)
        if (distance(paletteColor(index), rgb) < distance(paletteColor(best), rgb)) best = index;
    return static_cast<std::int16_t>(best);
}

} // namespace veldrin
