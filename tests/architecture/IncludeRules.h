#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

/// The rules of docs/architecture.md about who may include what, and the check of a source tree against them.
///
/// All folders are relative to the root of the sources, with forward slashes: "platform/lisp". Of several
/// folders that hold a file the longest one counts.
class IncludeRules {
public:
    /// Reads the tables "Tree", "Room" and "Header" of the page. Throws std::runtime_error for a page
    /// that lacks one of them or holds a row that cannot be read.
    static IncludeRules fromPage(std::string_view markdown);

    /// One line for each include that breaks a rule, "file:line: reason", of all sources below the root.
    std::vector<std::string> violations(const std::filesystem::path& root) const;

    /// Rooms by folder, with their levels.
    const std::map<std::string, int>& rooms() const { return levels_; }

private:
    std::string judge(const std::filesystem::path& root, const std::string& file, const std::string& header,
                      bool quoted) const;
    std::string judgeOwn(const std::string& file, const std::string& target) const;
    std::string judgeForeign(const std::string& file, const std::string& header) const;

    std::map<std::string, std::vector<std::string>> sees_;
    std::map<std::string, int> levels_;
    std::map<std::string, std::vector<std::string>> foreign_;
};
