#include "graphics/plot_paper.h"

#include "system/AsciiCase.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <string_view>

namespace veldrin {

namespace {

constexpr double kInch = 25.4; // millimetres
constexpr double kInchesPerFoot = 12.0;

struct NamedPaper {
    std::string_view name;
    double width; // the shorter side
    double height;
};

constexpr std::array kPapers{
    NamedPaper{"A0", 841, 1189},
    NamedPaper{"A1", 594, 841},
    NamedPaper{"A2", 420, 594},
    NamedPaper{"A3", 297, 420},
    NamedPaper{"A4", 210, 297},
    NamedPaper{"A5", 148, 210},
    NamedPaper{"LETTER", 8.5 * kInch, 11 * kInch},
    NamedPaper{"LEGAL", 8.5 * kInch, 14 * kInch},
    NamedPaper{"TABLOID", 11 * kInch, 17 * kInch},
    NamedPaper{"ARCHA", 9 * kInch, 12 * kInch},
    NamedPaper{"ARCHB", 12 * kInch, 18 * kInch},
    NamedPaper{"ARCHC", 18 * kInch, 24 * kInch},
    NamedPaper{"ARCHD", 24 * kInch, 36 * kInch},
    NamedPaper{"ARCHE", 36 * kInch, 48 * kInch},
    NamedPaper{"ANSIA", 8.5 * kInch, 11 * kInch},
    NamedPaper{"ANSIB", 11 * kInch, 17 * kInch},
    NamedPaper{"ANSIC", 17 * kInch, 22 * kInch},
    NamedPaper{"ANSID", 22 * kInch, 34 * kInch},
    NamedPaper{"ANSIE", 34 * kInch, 44 * kInch},
};

std::string key(const std::string& text) {
    std::string out;
    for (const char c : text)
        if (!std::isspace(static_cast<unsigned char>(c)) && c != '-' && c != '_')
            out += veldrin::asciiUpper(c);
    return out;
}

bool takeEnding(std::string& text, std::string_view ending) {
    if (!text.ends_with(ending)) return false;
    text.resize(text.size() - ending.size());
    return true;
}

bool takeNumber(std::string_view& text, double& value) {
    while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || !(value >= 0.0)) return false;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return true;
}

bool takeMark(std::string_view& text, char mark) {
    while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
    if (text.empty() || text.front() != mark) return false;
    text.remove_prefix(1);
    return true;
}

// A number, or whole and fraction: "3", "1/4", "1 1/2", "1-1/2".
bool takeMixed(std::string_view& text, double& value) {
    if (!takeNumber(text, value)) return false;
    double below = 0.0;
    if (takeMark(text, '/')) {
        if (!takeNumber(text, below) || below == 0.0) return false;
        value /= below;
        return true;
    }
    std::string_view rest = text;
    double above = 0.0;
    takeMark(rest, '-');
    if (!takeNumber(rest, above) || !takeMark(rest, '/') || !takeNumber(rest, below) || below == 0.0)
        return true;
    value += above / below;
    text = rest;
    return true;
}

// A length in feet and inches, or a plain number.
std::optional<double> length(std::string_view text) {
    double value = 0.0;
    double inches = 0.0;
    if (!takeMixed(text, value)) return std::nullopt;
    if (takeMark(text, '\'')) {
        value *= kInchesPerFoot;
        takeMark(text, '-');
        if (takeMixed(text, inches)) value += inches;
    }
    takeMark(text, '"');
    while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
    if (!text.empty() || !(value > 0.0)) return std::nullopt;
    return value;
}

std::optional<PaperSize> explicitSize(const std::string& text) {
    std::string sizes = text;
    const bool inches = takeEnding(sizes, "IN") || takeEnding(sizes, "\"");
    takeEnding(sizes, "MM");
    std::string_view rest = sizes;
    PaperSize paper;
    if (!takeNumber(rest, paper.width) || !takeMark(rest, 'X') || !takeNumber(rest, paper.height) ||
        !rest.empty())
        return std::nullopt;
    if (!(paper.width > 0.0) || !(paper.height > 0.0)) return std::nullopt;
    const double unit = inches ? kInch : 1.0;
    return PaperSize{paper.width * unit, paper.height * unit, false};
}

} // namespace

std::optional<PaperSize> paperSize(const std::string& text) {
    std::string name = key(text);
    const bool landscape = takeEnding(name, "LANDSCAPE");
    const bool portrait = !landscape && takeEnding(name, "PORTRAIT");
    const auto found = std::find_if(kPapers.begin(), kPapers.end(),
                                    [&](const NamedPaper& paper) { return paper.name == name; });
    if (found == kPapers.end()) return explicitSize(name);
    PaperSize paper{found->width, found->height, !landscape && !portrait};
    if (landscape) std::swap(paper.width, paper.height);
    return paper;
}

std::optional<double> plotScale(const std::string& text) {
    if (key(text) == "FIT") return 0.0;
    const std::size_t mark = text.find_first_of(":=");
    if (mark == std::string::npos) {
        const auto units = length(text);
        return units ? std::optional(1.0 / *units) : std::nullopt;
    }
    const auto onPaper = length(std::string_view(text).substr(0, mark));
    const auto inDrawing = length(std::string_view(text).substr(mark + 1));
    if (!onPaper || !inDrawing) return std::nullopt;
    return *onPaper / *inDrawing;
}

} // namespace veldrin
