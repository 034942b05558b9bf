#pragma once

#include "files/DxfOutput.h"
#include "runtime/VeldrinApi.h"

#include <optional>
#include <string>
#include <vector>

class AcDbDatabase;

namespace veldrin {

struct DxfExportOptions {
    DxfVersion version = DxfVersion::kR2000;
    int decimals = kDxfFullPrecision;
    // Entities of modules become the plain ones that they look like, for programs that do not know them and
    // show no pictures of them.
    bool explodes = false;
};

// "R2000", "2018", "AC1015" ...: the version that a user means; none for a word that is no version. Those
// between the two that are written are written as the older one.
VELDRIN_API std::optional<DxfVersion> dxfVersionNamed(std::string text);

// Writes a drawing for other programs. The file takes its place when it is whole. What came out as less than
// it is, is told a line each. The result is the line about what failed.
[[nodiscard]] VELDRIN_API std::optional<std::string> exportDxf(AcDbDatabase& database,
                                                               const std::string& path,
                                                               const DxfExportOptions& options,
                                                               std::vector<std::string>& losses);

} // namespace veldrin
