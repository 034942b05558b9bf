// What a text means as a point, a length, an angle or a keyword.

#include "drawing/AcDbDatabase.h"
#include "editor/EditorInput.h"
#include "editor/SystemVariables.h"
#include "lisp/Units.h"
#include "runtime/Host.h"
#include "system/AsciiCase.h"

#include <algorithm>
#include <cctype>
#include <cmath>

namespace veldrin {

namespace {

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && std::isspace(static_cast<unsigned char>(text.front()))) text.remove_prefix(1);
    while (!text.empty() && std::isspace(static_cast<unsigned char>(text.back()))) text.remove_suffix(1);
    return text;
}

// "length<angle", and "<angle" once more for the elevation angle.
std::optional<AcGeVector3d> polarOffset(std::string_view text) {
    const std::size_t mark = text.find('<');
    const std::size_t second = text.find('<', mark + 1);
    const auto length = parseDistance(text.substr(0, mark));
    const auto angle = parseAngle(text.substr(mark + 1, second == text.npos ? text.npos : second - mark - 1));
    if (!length || !angle) return std::nullopt;
    if (second == text.npos) return AcGeVector3d(*length * std::cos(*angle), *length * std::sin(*angle), 0.0);
    const auto rise = parseAngle(text.substr(second + 1));
    if (!rise) return std::nullopt;
    const double flat = *length * std::cos(*rise);
    return AcGeVector3d(flat * std::cos(*angle), flat * std::sin(*angle), *length * std::sin(*rise));
}

// "x,y" and "x,y,z"; without z the given one counts.
std::optional<AcGeVector3d> coordinates(std::string_view text, double z) {
    if (text.find('<') != text.npos) {
        auto polar = polarOffset(text);
        if (polar && polar->z == 0.0) polar->z = z;
        return polar;
    }
    double values[3] = {0.0, 0.0, z};
    int count = 0;
    for (std::size_t from = 0; from <= text.size(); ++count) {
        const std::size_t comma = std::min(text.find(',', from), text.size());
        if (count == 3) return std::nullopt;
        const auto value = parseDistance(text.substr(from, comma - from));
        if (!value) return std::nullopt;
        values[count] = *value;
        from = comma + 1;
    }
    if (count < 2) return std::nullopt;
    return AcGeVector3d(values[0], values[1], values[2]);
}

} // namespace

std::optional<double> parseDistance(std::string_view text) {
    text = trimmed(text);
    const auto value = lisp::parseLength(text);
    return value && std::isfinite(*value) ? value : std::nullopt;
}

std::optional<double> parseAngle(std::string_view text) {
    const int units = std::clamp(Host::current().variables().integer("AUNITS"), 0, 4);
    const auto value = lisp::parseAngle(trimmed(text), static_cast<lisp::AngleUnits>(units));
    return value && std::isfinite(*value) ? value : std::nullopt;
}

std::optional<AcGePoint3d> parsePoint(std::string_view text) {
    text = trimmed(text);
    bool world = false, relative = false;
    while (!text.empty() && (text.front() == '*' || text.front() == '@')) {
        (text.front() == '*' ? world : relative) = true;
        text.remove_prefix(1);
    }
    const AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase();
    if (!database) return std::nullopt;
    const AcGeMatrix3d toWorld = world ? AcGeMatrix3d() : database->ucsToWorld();
    std::optional<AcGeVector3d> offset;
    if (relative && text.empty())
        offset = AcGeVector3d();
    else
        offset = coordinates(text, relative || world ? 0.0 : database->header().elevation);
    if (!offset) return std::nullopt;

    AcGePoint3d point = AcGePoint3d::kOrigin + *offset;
    if (!relative) return point.transformBy(toWorld);
    AcGePoint3d from;
    if (const auto last = Host::current().variables().get("LASTPOINT"))
        if (const auto* p = std::get_if<AcGePoint3d>(&*last)) from = *p;
    from.transformBy(database->ucsToWorld());
    return from + offset->transformBy(toWorld);
}

std::string matchKeyword(std::string_view text, std::string_view keywords) {
    std::string typed = asciiUpperCase(trimmed(text));
    while (!typed.empty() && (typed.front() == '_' || typed.front() == '.')) typed.erase(0, 1);
    if (typed.empty()) return {};
    std::string found;
    for (std::size_t at = 0; at < keywords.size();) {
        const std::size_t end = std::min(keywords.find(' ', at), keywords.size());
        const std::string_view entry = keywords.substr(at, end - at);
        at = end + 1;
        const std::size_t comma = entry.find(',');
        const std::string_view word = entry.substr(0, comma);
        if (word.empty()) continue;
        const std::string whole = asciiUpperCase(word);
        if (typed == whole) return std::string(word);
        if (!found.empty()) continue;
        // The least that must be typed: the capitals, or what stands behind the comma.
        std::string least;
        if (comma != entry.npos)
            least = asciiUpperCase(entry.substr(comma + 1));
        else
            for (const char c : word)
                if (!std::islower(static_cast<unsigned char>(c))) least += c;
        const bool isLonger = typed.size() > least.size() && whole.compare(0, typed.size(), typed) == 0;
        if (!least.empty() && (typed == least || isLonger)) found = std::string(word);
    }
    return found;
}

} // namespace veldrin
