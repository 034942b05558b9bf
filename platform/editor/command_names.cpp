#include "editor/command_names.h"

#include "drawing/AcDbSymbolTable.h"
#include "drawing/AcGiPalette.h"
#include "lisp/WildMatch.h"
#include "system/AsciiCase.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace veldrin {

namespace {

std::optional<int> wholeNumber(std::string_view text) {
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(value) : std::nullopt;
}

constexpr const char* colorNames[] = {"BYBLOCK", "RED",  "YELLOW",  "GREEN",
                                      "CYAN",    "BLUE", "MAGENTA", "WHITE"};

constexpr AcDb::LineWeight lineWeights[] = {0,  5,  9,  13, 15, 18,  20,  25,  30,  35,  40,  50,
                                            53, 60, 70, 80, 90, 100, 106, 120, 140, 158, 200, 211};

} // namespace

std::vector<std::string> namesOf(std::string_view list) {
    std::vector<std::string> names;
    for (std::size_t at = 0; at <= list.size();) {
        const std::size_t comma = std::min(list.find(',', at), list.size());
        std::string_view name = list.substr(at, comma - at);
        while (!name.empty() && name.front() == ' ') name.remove_prefix(1);
        while (!name.empty() && name.back() == ' ') name.remove_suffix(1);
        if (!name.empty()) names.emplace_back(name);
        at = comma + 1;
    }
    return names;
}

AcDbObjectId recordNamed(AcDbObjectId tableId, const std::string& name) {
    const AcDbObjectPointer<AcDbSymbolTable> table(tableId);
    AcDbObjectId id;
    if (!table || table->getAt(name, id) != Acad::eOk) return {};
    return id;
}

std::vector<AcDbObjectId> recordsMatching(AcDbObjectId tableId, std::string_view patterns) {
    std::vector<AcDbObjectId> found;
    const AcDbObjectPointer<AcDbSymbolTable> table(tableId);
    if (!table) return found;
    const std::string wanted = asciiUpperCase(patterns);
    for (const AcDbObjectId id : table->recordIds()) {
        const AcDbObjectPointer<AcDbSymbolTableRecord> record(id);
        if (record && lisp::wildMatch(asciiUpperCase(record->getName()), wanted)) found.push_back(id);
    }
    return found;
}

std::optional<AcCmColor> parseColor(std::string_view text) {
    const std::string name = asciiUpperCase(text);
    if (name == "BYLAYER") return AcCmColor(AcCmColor::kByLayer);
    for (std::int16_t i = 0; i < 8; ++i)
        if (name == colorNames[i]) return AcCmColor(i);
    const auto index = wholeNumber(text);
    if (!index || *index < 1 || *index > 255) return std::nullopt;
    return AcCmColor(static_cast<std::int16_t>(*index));
}

std::optional<AcCmColor> parseTrueColor(std::string_view text) {
    const std::vector<std::string> parts = namesOf(text);
    if (parts.size() != 3) return std::nullopt;
    std::uint32_t rgb = 0;
    for (const std::string& part : parts) {
        const auto value = wholeNumber(part);
        if (!value || *value < 0 || *value > 255) return std::nullopt;
        rgb = rgb << 8 | static_cast<std::uint32_t>(*value);
    }
    AcCmColor color;
    color.setRGB(rgb, nearestIndex(rgb));
    return color;
}

std::optional<AcDb::LineWeight> parseLineWeight(std::string_view text) {
    if (asciiUpperCase(text) == "DEFAULT") return AcDb::kLnWtByLwDefault;
    double millimetres = 0.0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), millimetres);
    if (error != std::errc() || end != text.data() + text.size() ||
        !(millimetres >= 0.0 && millimetres <= 2.11))
        return std::nullopt;
    return *std::ranges::min_element(lineWeights, {}, [millimetres](AcDb::LineWeight weight) {
        return std::abs(weight - millimetres * 100.0);
    });
}

} // namespace veldrin
