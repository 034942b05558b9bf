#include "files/drawing_file_checks.h"

#include "files/SqlFile.h"

#include <fmt/format.h>

#include <filesystem>
#include <system_error>

namespace fs = std::filesystem;

namespace veldrin {

std::string complaint(const char* what, const std::string& path, std::string reason) {
    for (char& c : reason)
        if (c == '\n' || c == '\r') c = ' ';
    return fmt::format("Cannot {} drawing {}: {}.", what, path, reason);
}

std::string whyNotReadable(const std::string& path) {
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (status.type() == fs::file_type::not_found) return "there is no such file";
    if (error) return error.message();
    if (fs::is_directory(status)) return "it is a folder";
    if (fs::file_size(path, error) == 0 && !error) return "it is empty";
    return {};
}

bool hasWholeLength(SqlFile& file, const std::string& path) {
    const std::int64_t expected = file.number("pragma page_count") * file.number("pragma page_size");
    std::error_code error;
    return static_cast<std::int64_t>(fs::file_size(path, error)) >= expected;
}

} // namespace veldrin
