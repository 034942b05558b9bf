#pragma once

#include <string>
#include <vector>

namespace veldrin {

// Copies the rows that can be read from a damaged drawing file into a new one. What could not be is told, a
// line each. The result says why nothing could be copied; empty when the new file is there.
std::string salvageRows(const std::string& damaged, const std::string& into, std::vector<std::string>& told);

} // namespace veldrin
