#pragma once

#include "geometry/AcGePoint3d.h"

#include <vector>

using AcGePoint3dArray = std::vector<AcGePoint3d>;
using AcGePoint2dArray = std::vector<AcGePoint2d>;
using AcGeDoubleArray = std::vector<double>;
using AcGeIntArray = std::vector<int>;
