#include "files/DxfExport.h"

#include "files/DxfDrawingWriter.h"
#include "files/FileReplacement.h"
#include "files/drawing_file_checks.h"
#include "system/AsciiCase.h"

#include <algorithm>
#include <fmt/format.h>

namespace veldrin {

std::optional<DxfVersion> dxfVersionNamed(std::string text) {
    text = asciiUpperCase(text);
    if (text.starts_with('R') && text.size() == 5) text.erase(0, 1);
    for (const char* name : {"2000", "AC1015", "2004", "AC1018", "2007", "AC1021", "2010", "AC1024"})
        if (text == name) return DxfVersion::kR2000;
    for (const char* name : {"2013", "AC1027", "2018", "AC1032"})
        if (text == name) return DxfVersion::kR2018;
    return std::nullopt;
}

std::optional<std::string> exportDxf(AcDbDatabase& database, const std::string& path,
                                     const DxfExportOptions& options, std::vector<std::string>& losses) {
    const std::string target = realPath(path);
    std::string problem = whyNotWritable(target);
    if (problem.empty()) {
        FileReplacement replacement(target);
        DxfOutput out(replacement.path(), options.version,
                      std::clamp(options.decimals, 0, kDxfFullPrecision));
        DxfDrawingWriter writer(out, database, options.explodes);
        writer.write();
        problem = out.finish();
        if (problem.empty()) problem = replacement.commit();
        losses = writer.losses();
        if (out.senselessNumbers() > 0)
            losses.push_back(
                fmt::format("{} values that are no numbers were written as 0.", out.senselessNumbers()));
    }
    if (!problem.empty()) return complaint("export", path, problem);
    return std::nullopt;
}

} // namespace veldrin
