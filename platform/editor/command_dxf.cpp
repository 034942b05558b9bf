// DXFOUT, DXFIN

#include "drawing/AcDbBlockTable.h"
#include "drawing/block_copies.h"
#include "editor/DocumentManager.h"
#include "editor/command_support.h"
#include "editor/command_tables.h"
#include "files/DxfExport.h"
#include "files/DxfImport.h"
#include "runtime/Host.h"

#include <charconv>
#include <filesystem>
#include <fmt/format.h>

namespace veldrin {

namespace {

namespace fs = std::filesystem;

// With the ending where it is missing.
std::string exchangePath(const std::string& name) {
    std::error_code error;
    const fs::path path = fs::absolute(name, error).lexically_normal();
    return path.has_extension() ? path.string() : path.string() + ".dxf";
}

// Decimal places, in front of them a version or Explode; a script may end at any of them.
Task<DxfExportOptions> askOptions(CommandContext& context) {
    DxfExportOptions options;
    while (moreIsSaid(context)) {
        const Answer answer = co_await context.input.string(
            "Enter decimal places of accuracy (0 to 16) or [R2000/R2018/Explode] <16>:");
        if (answer.isNone() || answer.text.empty()) break;
        const char* const end = answer.text.data() + answer.text.size();
        int decimals = 0;
        const auto [stop, error] = std::from_chars(answer.text.data(), end, decimals);
        if (error == std::errc() && stop == end && decimals >= 0 && decimals <= kDxfFullPrecision) {
            options.decimals = decimals;
            break;
        }
        if (const auto version = dxfVersionNamed(answer.text))
            options.version = *version;
        else if (matchKeyword(answer.text, "Explode") == "Explode")
            options.explodes = true;
        else
            failCommand(fmt::format("\"{}\" is no number from 0 to 16.", answer.text));
    }
    co_return options;
}

Task<void> dxfOutCommand(CommandContext& context) {
    const Answer file = co_await context.input.string("Enter name of drawing exchange file:");
    if (file.isNone() || file.text.empty()) throw InputCancelled();
    const DxfExportOptions options = co_await askOptions(context);
    std::vector<std::string> losses;
    if (const auto problem = exportDxf(context.database, exchangePath(file.text), options, losses))
        failCommand(*problem);
    for (const std::string& line : losses) say(context, line);
}

// What comes in stands behind what is there; layers, styles and blocks of a name stay as they are here.
Task<void> dxfInCommand(CommandContext& context) {
    const Answer file = co_await context.input.string("Enter name of drawing exchange file:");
    if (file.isNone() || file.text.empty()) throw InputCancelled();
    DxfImportReport report;
    auto imported = importDxf(exchangePath(file.text), report);
    if (const auto* problem = std::get_if<std::string>(&imported)) failCommand(*problem);
    AcDbDatabase& source = *std::get<std::unique_ptr<AcDbDatabase>>(imported);
    requireOk(mergeDrawing(context.database, source), "The drawing cannot be taken over");
    for (const std::string& line : report.lines()) say(context, line);
}

constexpr CommandRow rows[] = {
    {"DXFOUT", "", dxfOutCommand, kCommandWithoutStep},
    {"DXFIN", "", dxfInCommand, 0},
};

} // namespace

std::span<const CommandRow> exchangeCommands() {
    return rows;
}

} // namespace veldrin
