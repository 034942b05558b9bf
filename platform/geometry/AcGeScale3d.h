#pragma once

// Factors along three axes.
struct AcGeScale3d {
    double sx = 1.0;
    double sy = 1.0;
    double sz = 1.0;
};
