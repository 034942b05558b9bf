#include "files/FileReplacement.h"

#include "files/SqlFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <filesystem>
#include <system_error>
#include <utility>

namespace fs = std::filesystem;

namespace veldrin {

namespace {

constexpr const char* kEnding = ".saving";

// The engine takes back by this file what a killed program left half-written. Left behind for another file it
// would be played into that one.
std::string journalOf(const std::string& path) {
    return path + "-journal";
}

std::string dropJournal(const std::string& target) {
    std::error_code error;
    if (!fs::exists(journalOf(target), error)) return {};
    if (fs::exists(target, error)) {
        SqlFile old(target, SqlFile::Mode::kExisting);
        old.number("select count(*) from sqlite_schema"); // the first look at the file takes back what is
                                                          // half-written
        if (old.isBusy()) return old.error();
    }
    fs::remove(journalOf(target), error);
    return error ? error.message() : std::string();
}

// Makes the new name last through a power failure. Not all file systems can, and then nothing is lost but
// that.
void syncFolderOf(const std::string& path) {
    const int folder = open(fs::path(path).parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0) return;
    fsync(folder);
    close(folder);
}

} // namespace

FileReplacement::FileReplacement(std::string target)
    : m_target(std::move(target)), m_path(m_target + kEnding) {
    dropLeftovers(m_target);
}

void FileReplacement::dropLeftovers(const std::string& target) {
    std::error_code none;
    fs::remove(target + kEnding, none);
    fs::remove(journalOf(target + kEnding), none);
}

FileReplacement::~FileReplacement() {
    if (m_path.empty()) return;
    std::error_code none;
    fs::remove(m_path, none);
}

std::string FileReplacement::commit() {
    std::string problem = dropJournal(m_target);
    if (!problem.empty()) return problem;
    std::error_code error;
    const fs::file_status old = fs::status(m_target, error);
    if (fs::is_regular_file(old)) fs::permissions(m_path, old.permissions(), error);
    fs::rename(m_path, m_target, error);
    if (error) return error.message();
    m_path.clear();
    syncFolderOf(m_target);
    return {};
}

std::string whyNotWritable(const std::string& path) {
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (fs::is_directory(status)) return "it is a folder";
    if (fs::exists(status)) return eaccess(path.c_str(), W_OK) == 0 ? "" : "it is write-protected";
    const fs::path folder = fs::path(path).parent_path();
    if (!fs::is_directory(folder, error)) return "its folder does not exist";
    return eaccess(folder.c_str(), W_OK) == 0 ? "" : "its folder is write-protected";
}

std::string realPath(const std::string& path) {
    std::error_code error;
    const fs::path real = fs::weakly_canonical(fs::absolute(path, error), error);
    return error ? path : real.string();
}

} // namespace veldrin
