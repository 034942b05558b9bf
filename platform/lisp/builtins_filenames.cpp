// Paths as texts. Both slashes separate.
#include "lisp/Builtins.h"

#include <filesystem>
#include <fmt/format.h>
#include <unistd.h>

namespace veldrin::lisp {

namespace {

struct PathParts {
    std::string_view folder, base, extension; // the extension with its point; without any, empty
};

PathParts split(std::string_view path) {
    PathParts parts;
    const auto slash = path.find_last_of("/\\");
    const auto name = slash == std::string_view::npos ? path : path.substr(slash + 1);
    if (slash != std::string_view::npos) parts.folder = path.substr(0, slash == 0 ? 1 : slash);
    const auto point = name.rfind('.');
    const bool hasExtension = point != std::string_view::npos && point > 0;
    parts.base = hasExtension ? name.substr(0, point) : name;
    if (hasExtension) parts.extension = name.substr(point);
    return parts;
}

Value directory(Engine&, Args args) {
    return Value::text(split(args.text(0)).folder);
}
Value base(Engine&, Args args) {
    return Value::text(split(args.text(0)).base);
}

Value extension(Engine&, Args args) {
    const auto extension = split(args.text(0)).extension;
    return extension.empty() ? Value() : Value::text(extension);
}

// A path that no file has yet, counted up from the pattern's name.
Value makeTemporary(Engine&, Args args) {
    namespace fs = std::filesystem;
    std::error_code problem;
    const PathParts pattern = split(args.has(0) ? args.text(0) : std::string_view("lisp"));
    std::string folder(args.has(1) ? args.text(1) : pattern.folder);
    if (folder.empty()) folder = fs::temp_directory_path(problem).string();
    const std::string_view ending = args.has(2) ? args.text(2) : pattern.extension;
    for (int n = 1; n < 1'000'000; ++n) {
        const std::string name = fmt::format("{}{:x}{:03}{}", pattern.base, getpid(), n, ending);
        const std::string path = (fs::path(folder) / name).string();
        if (!fs::exists(path, problem)) return Value::text(path);
    }
    return {};
}

constexpr BuiltinRow rows[] = {
    {"vl-filename-directory", 1, 1, directory},
    {"vl-filename-base", 1, 1, base},
    {"vl-filename-extension", 1, 1, extension},
    {"vl-filename-mktemp", 0, 3, makeTemporary},
};

} // namespace

std::span<const BuiltinRow> fileNameBuiltins() {
    return rows;
}

} // namespace veldrin::lisp
