#pragma once

#include "drawing/AcCmColor.h"
#include "drawing/AcDbDatabase.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace veldrin {

// Names and values as they are typed: of table records, colours and line weights.

// The names of a list with commas.
std::vector<std::string> namesOf(std::string_view list);
// The record of a symbol table with that name, regardless of case; null when there is none.
AcDbObjectId recordNamed(AcDbObjectId table, const std::string& name);
// Those that match a list of patterns, in the order of the table.
std::vector<AcDbObjectId> recordsMatching(AcDbObjectId table, std::string_view patterns);

// "1" to "255", "red" ... "white", "bylayer", "byblock".
std::optional<AcCmColor> parseColor(std::string_view text);
std::optional<AcCmColor> parseTrueColor(std::string_view text); // "255,128,0"
// Millimetres, taken to the nearest weight that drawings know; "default".
std::optional<AcDb::LineWeight> parseLineWeight(std::string_view text);

} // namespace veldrin
