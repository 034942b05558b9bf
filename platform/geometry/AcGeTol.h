#pragma once

#include "geometry/GeometryApi.h"

// How far apart two points (drawing units) or two unit directions may lie and still count as equal.
struct AcGeTol {
    double equalPoint = 1.0e-10;
    double equalVector = 1.0e-10;
};

struct VELDRIN_GEOMETRY_API AcGeContext {
    static AcGeTol gTol; // the tolerance of every test that is not given its own
};
