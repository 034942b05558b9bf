#pragma once

#include "drawing/AcDbEntity.h"

#include <string>

namespace veldrin {

// The parts of LIST's lines, as entities of all classes print them through acutPrintf. Lengths have the
// decimals of LUPREC, angles are degrees.
std::string listedLength(const AcDbEntity& entity, double value);
std::string listedAngle(double radians);
// "<label> X=...  Y=...  Z=..." as a line; the label ends at a fixed column.
void listPoint(const AcDbEntity& entity, const char* label, const AcGePoint3d& point);
// "<label> <value>" as a line.
void listValue(const char* label, const std::string& value);

} // namespace veldrin
