#include "ui/DialogLayout.h"

#include <algorithm>

namespace {

constexpr int kUnitsAcross = 4;
constexpr int kUnitsDown = 8;
constexpr int kWhole = 100; // percent

int pixels(int dialogUnits, int base, int divisor) {
    return (dialogUnits * base + divisor / 2) / divisor;
}

void apply(DialogRect& rect, const ControlResize& rule, int across, int down) {
    const int shareAcross = across * rule.percent / kWhole;
    const int shareDown = down * rule.percent / kWhole;
    if (rule.how & kMoveAcross) rect.x += shareAcross;
    if (rule.how & kMoveDown) rect.y += shareDown;
    if (rule.how & kStretchAcross) rect.width += shareAcross;
    if (rule.how & kStretchDown) rect.height += shareDown;
}

} // namespace

DialogRect dialogSize(const DialogTemplate& form, const DialogBaseUnits& units) {
    return {0, 0, pixels(form.width, units.width, kUnitsAcross),
            pixels(form.height, units.height, kUnitsDown)};
}

std::vector<DialogRect> layoutDialog(const DialogTemplate& form, std::span<const ControlResize> rules,
                                     const DialogBaseUnits& units, int growthAcross, int growthDown) {
    growthAcross = std::max(growthAcross, 0);
    growthDown = std::max(growthDown, 0);
    std::vector<DialogRect> places;
    places.reserve(form.controls.size());
    for (const ControlTemplate& control : form.controls) {
        DialogRect rect{pixels(control.x, units.width, kUnitsAcross),
                        pixels(control.y, units.height, kUnitsDown),
                        pixels(control.width, units.width, kUnitsAcross),
                        pixels(control.height, units.height, kUnitsDown)};
        for (const ControlResize& rule : rules)
            if (rule.id == control.id) apply(rect, rule, growthAcross, growthDown);
        places.push_back(rect);
    }
    return places;
}
