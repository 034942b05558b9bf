#pragma once

#include "files/SqlFile.h"

class AcDbDatabase;

namespace veldrin {

// Header variables as rows of name and value: numbers as they are, objects by handle, points as three numbers
// with commas between, colours as an index or, with a true colour, as index and 0xRRGGBB.
bool writeHeaderRows(SqlFile& file, const AcDbDatabase& database);

// Takes the rows over, and the number that the next handle has. Rows of names that are unknown, and values
// that cannot be read, are left out: the variable keeps its default. The objects must be there already.
bool readHeaderRows(SqlFile& file, AcDbDatabase& database);

} // namespace veldrin
