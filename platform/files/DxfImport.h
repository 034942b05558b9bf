#pragma once

#include "drawing/AcDbDatabase.h"

#include <map>
#include <memory>
#include <string>
#include <variant>
#include <vector>

namespace veldrin {

// What became of a file that was read.
struct DxfImportReport {
    std::string version;                // "AC1015"
    int entities = 0;                   // that were read, those in blocks too
    std::map<std::string, int> kept;    // kinds that are not known: written back as they came, but not shown
    std::map<std::string, int> leftOut; // kinds that could not be kept
    std::vector<std::string> problems;  // with the line in the file; the first of many

    // For the user; empty when all went well.
    std::vector<std::string> lines() const;
};

// Whether the name ends as exchange files do.
VELDRIN_API bool isExchangeFile(const std::string& path);

// The drawing of an exchange file, or the line about what failed. A reader goes on where it can: an object
// that cannot be read is left out and told.
[[nodiscard]] VELDRIN_API std::variant<std::unique_ptr<AcDbDatabase>, std::string>
importDxf(const std::string& path, DxfImportReport& report);

// The same from bytes in memory; the name is for messages.
[[nodiscard]] VELDRIN_API std::variant<std::unique_ptr<AcDbDatabase>, std::string>
importDxfBytes(std::string_view bytes, const std::string& name, DxfImportReport& report);

} // namespace veldrin
