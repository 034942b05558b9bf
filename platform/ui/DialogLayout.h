#pragma once

#include "runtime/VeldrinApi.h"
#include "ui/DialogTemplate.h"

#include <span>
#include <vector>

// Pixels that four dialog units across and eight down take up with the font of whoever shows the dialog: the
// average width of a letter, and its height.
struct DialogBaseUnits {
    int width = 6;
    int height = 13;
};

struct DialogRect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    bool operator==(const DialogRect&) const = default;
};

// The size of the dialog's inside as its template says.
VELDRIN_API DialogRect dialogSize(const DialogTemplate& form, const DialogBaseUnits& units);

// Where each control of the template stands when the inside is larger than that by so many pixels: each rule
// moves or stretches its control by its share. A dialog does not get smaller than its template.
VELDRIN_API std::vector<DialogRect> layoutDialog(const DialogTemplate& form,
                                                 std::span<const ControlResize> rules,
                                                 const DialogBaseUnits& units, int growthAcross,
                                                 int growthDown);
