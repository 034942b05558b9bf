// Files and folders on disk. What cannot be done answers nil.
#include "lisp/Builtins.h"
#include "lisp/Characters.h"
#include "lisp/FileStream.h"
#include "lisp/WildMatch.h"

#include <algorithm>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <sys/stat.h>

namespace veldrin::lisp {

namespace fs = std::filesystem;

namespace {

std::string path(Args args, std::size_t i) {
    return nativePath(args.text(i));
}

Value findFile(Engine& e, Args args) {
    const std::string found = e.services().findFile(path(args, 0));
    return found.empty() ? Value() : Value::text(found);
}

Value fileSize(Engine&, Args args) {
    std::error_code problem;
    const std::string name = path(args, 0);
    if (fs::is_directory(name, problem)) return Value::integer(0);
    const auto size = fs::file_size(name, problem);
    if (problem) return {};
    if (size > static_cast<std::uintmax_t>(std::numeric_limits<std::int32_t>::max()))
        return Value::real(static_cast<double>(size));
    return Value::integer(static_cast<std::int32_t>(size));
}

Value deleteFile(Engine&, Args args) {
    std::error_code problem;
    const std::string name = path(args, 0);
    if (fs::is_directory(name, problem)) return {};
    return Value::boolean(fs::remove(name, problem) && !problem);
}

// Answers how many bytes were copied; an existing file is only ever added to, and only when asked.
Value copyFile(Engine&, Args args) {
    std::error_code problem;
    const std::string from = path(args, 0), to = path(args, 1);
    const bool append = args.has(2);
    if (!fs::is_regular_file(from, problem) || fs::equivalent(from, to, problem)) return {};
    if (!append && fs::exists(to, problem)) return {};
    std::ifstream source(from, std::ios::binary);
    std::ofstream target(to, std::ios::binary | (append ? std::ios::app : std::ios::trunc));
    if (!source || !target) return {};
    std::int64_t copied = 0;
    char block[16384];
    while (source.read(block, sizeof block) || source.gcount() > 0) {
        target.write(block, source.gcount());
        copied += source.gcount();
    }
    target.close();
    if (!target || source.bad()) return {};
    return Value::integer(static_cast<std::int32_t>(std::min<std::int64_t>(copied, 0x7FFFFFFF)));
}

Value renameFile(Engine&, Args args) {
    std::error_code problem;
    const std::string from = path(args, 0), to = path(args, 1);
    if (fs::exists(to, problem)) return {};
    fs::rename(from, to, problem);
    return Value::boolean(!problem);
}

Value isDirectory(Engine&, Args args) {
    std::error_code problem;
    return Value::boolean(fs::is_directory(path(args, 0), problem));
}

// (year month weekday day hour minute second), weekday 0 for Sunday.
Value fileTime(Engine&, Args args) {
    struct stat info {};
    if (stat(path(args, 0).c_str(), &info) != 0) return {};
    std::tm t{};
    localtime_r(&info.st_mtime, &t);
    ListBuilder parts;
    for (const int part :
         {t.tm_year + 1900, t.tm_mon + 1, t.tm_wday, t.tm_mday, t.tm_hour, t.tm_min, t.tm_sec})
        parts.add(Value::integer(part));
    return parts.finish();
}

Value makeDirectory(Engine&, Args args) {
    std::error_code problem;
    return Value::boolean(fs::create_directory(path(args, 0), problem) && !problem);
}

// (vl-directory-files FOLDER PATTERN WHAT): WHAT is -1 for folders, 1 for files, 0 for both.
Value directoryFiles(Engine&, Args args) {
    const std::string folder = args.has(0) ? path(args, 0) : ".";
    const std::string pattern = args.has(1) ? lowerCase(args.text(1)) : "*";
    const int what = args.has(2) ? args.integer(2) : 0;
    std::vector<std::string> names;
    const auto add = [&](const std::string& name, bool isFolder) {
        if ((isFolder ? what <= 0 : what >= 0) && (pattern == "*.*" || wildMatch(lowerCase(name), pattern)))
            names.push_back(name);
    };
    std::error_code problem;
    fs::directory_iterator at(folder.empty() ? "." : folder, problem);
    if (problem) return {};
    add(".", true);
    add("..", true);
    for (; at != fs::directory_iterator(); at.increment(problem)) {
        std::error_code ignored;
        add(at->path().filename().string(), at->is_directory(ignored));
        if (problem) break;
    }
    std::sort(names.begin(), names.end());
    ListBuilder files;
    for (const std::string& name : names) files.add(Value::text(name));
    return files.finish();
}

constexpr BuiltinRow rows[] = {
    {"findfile", 1, 1, findFile},
    {"vl-file-size", 1, 1, fileSize},
    {"vl-file-delete", 1, 1, deleteFile},
    {"vl-file-copy", 2, 3, copyFile},
    {"vl-file-rename", 2, 2, renameFile},
    {"vl-file-directory-p", 1, 1, isDirectory},
    {"vl-file-systime", 1, 1, fileTime},
    {"vl-mkdir", 1, 1, makeDirectory},
    {"vl-directory-files", 0, 3, directoryFiles},
};

} // namespace

std::span<const BuiltinRow> fileBuiltins() {
    return rows;
}

} // namespace veldrin::lisp
