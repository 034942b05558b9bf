#include "architecture/IncludeRules.h"

#include <algorithm>
#include <fstream>
#include <optional>
#include <regex>
#include <set>
#include <sstream>
#include <stdexcept>

namespace fs = std::filesystem;

namespace {

using Row = std::vector<std::string>;

Row splitRow(const std::string& line) {
    Row cells;
    std::istringstream in(line.substr(1));
    for (std::string cell; std::getline(in, cell, '|');) cells.push_back(cell);
    return cells;
}

/// What stands between backquotes in a cell.
std::vector<std::string> codeSpans(const std::string& cell) {
    static const std::regex span("`([^`]+)`");
    std::vector<std::string> spans;
    for (std::sregex_iterator match(cell.begin(), cell.end(), span), end; match != end; ++match)
        spans.push_back((*match)[1]);
    return spans;
}

/// The rows of the table whose first column has that title.
std::vector<Row> tableRows(std::string_view markdown, const std::string& title) {
    std::istringstream in{std::string(markdown)};
    std::vector<Row> rows;
    bool inside = false;
    for (std::string line; std::getline(in, line);) {
        if (line.starts_with("| " + title + " |")) {
            inside = true;
            std::getline(in, line); // the line of dashes
        } else if (inside && line.starts_with("|")) {
            rows.push_back(splitRow(line));
            if (rows.back().size() < 2 || codeSpans(rows.back()[0]).empty())
                throw std::runtime_error("cannot read the row: " + line);
        } else {
            inside = false;
        }
    }
    if (rows.empty()) throw std::runtime_error("the page has no table \"" + title + "\"");
    return rows;
}

bool isBelow(const std::string& file, const std::string& folder) {
    return file.starts_with(folder + "/");
}

/// The longest folder among the keys that holds the file.
template<class Map>
std::optional<typename Map::value_type> ownerOf(const Map& folders, const std::string& file) {
    std::optional<std::size_t> best;
    typename Map::const_iterator found = folders.end();
    for (auto entry = folders.begin(); entry != folders.end(); ++entry) {
        if (!isBelow(file, entry->first) || entry->first.size() < best.value_or(0)) continue;
        best = entry->first.size();
        found = entry;
    }
    return best ? std::optional<typename Map::value_type>(*found) : std::nullopt;
}

bool isSource(const fs::path& path) {
    static const std::set<std::string> endings{".h", ".cpp", ".inc"};
    return endings.contains(path.extension().string());
}

/// Standard headers have neither dot nor capital nor folder: <vector>, <cstdint>.
bool isStandardHeader(const std::string& header) {
    return std::all_of(header.begin(), header.end(),
                       [](char c) { return c == '_' || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9'); });
}

} // namespace

IncludeRules IncludeRules::fromPage(std::string_view markdown) {
    IncludeRules rules;
    for (const Row& row : tableRows(markdown, "Tree")) rules.sees_[codeSpans(row[0])[0]] = codeSpans(row[1]);
    for (const Row& row : tableRows(markdown, "Room"))
        rules.levels_[codeSpans(row[0])[0]] = std::stoi(row[1]);
    for (const Row& row : tableRows(markdown, "Header"))
        for (const std::string& header : codeSpans(row[0])) rules.foreign_[header] = codeSpans(row[1]);
    return rules;
}

std::vector<std::string> IncludeRules::violations(const fs::path& root) const {
    static const std::regex include(R"re(^\s*#\s*include\s*(["<])([^">]+)[">])re");
    std::set<std::string> tops;
    for (const auto& [tree, seen] : sees_) tops.insert(tree.substr(0, tree.find('/')));

    std::vector<std::string> found;
    for (const std::string& top : tops) {
        if (!fs::exists(root / top)) continue;
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(root / top)) {
            if (!entry.is_regular_file() || !isSource(entry.path())) continue;
            const std::string file = entry.path().lexically_relative(root).generic_string();
            std::ifstream in(entry.path());
            int number = 0;
            for (std::string line; std::getline(in, line);) {
                ++number;
                std::smatch match;
                if (!std::regex_search(line, match, include)) continue;
                const std::string reason = judge(root, file, match[2], match[1] == "\"");
                if (!reason.empty()) found.push_back(file + ":" + std::to_string(number) + ": " + reason);
            }
        }
    }
    std::sort(found.begin(), found.end());
    return found;
}

std::string IncludeRules::judge(const fs::path& root, const std::string& file, const std::string& header,
                                bool quoted) const {
    const auto tree = ownerOf(sees_, file);
    if (!tree) return "the file lies in no tree that the page names";
    if (!quoted) return isStandardHeader(header) ? "" : judgeForeign(file, header);
    if (header.find("..") != std::string::npos) return "\"" + header + "\" leaves its folder";
    for (const std::string& seen : tree->second)
        if (fs::exists(root / seen / header)) return judgeOwn(file, seen + "/" + header);
    return "\"" + header + "\" is in no tree that " + tree->first + " sees";
}

std::string IncludeRules::judgeOwn(const std::string& file, const std::string& target) const {
    const auto to = ownerOf(levels_, target);
    if (!to) return isBelow(target, "platform") ? target + " lies in no room that the page names" : "";
    const auto from = ownerOf(levels_, file);
    if (!from) return isBelow(file, "platform") ? "the file lies in no room that the page names" : "";
    if (to->second <= from->second) return "";
    return from->first + " is of level " + std::to_string(from->second) + ", " + target + " of level " +
           std::to_string(to->second);
}

std::string IncludeRules::judgeForeign(const std::string& file, const std::string& header) const {
    std::string reason = "<" + header + "> is in no row of the page";
    for (const auto& [prefix, places] : foreign_) {
        if (!header.starts_with(prefix)) continue;
        if (std::any_of(places.begin(), places.end(),
                        [&](const std::string& place) { return isBelow(file, place); }))
            return "";
        reason = "<" + header + "> has no place here";
    }
    return reason;
}
