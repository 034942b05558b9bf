#include "files/DxfImport.h"

#include "drawing/UndoLog.h"
#include "files/DxfDrawingReader.h"
#include "files/drawing_file_checks.h"
#include "system/AsciiCase.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fmt/format.h>

namespace veldrin {

namespace {

constexpr std::size_t kMostLines = 20;

// A file in memory, as long as it is looked at.
class MappedFile {
public:
    explicit MappedFile(const std::string& path) : m_file(open(path.c_str(), O_RDONLY | O_CLOEXEC)) {
        struct stat status {};
        if (m_file < 0 || fstat(m_file, &status) != 0) {
            m_problem = std::strerror(errno);
            return;
        }
        m_size = static_cast<std::size_t>(status.st_size);
        void* const at = mmap(nullptr, m_size, PROT_READ, MAP_PRIVATE, m_file, 0);
        if (at == MAP_FAILED)
            m_problem = std::strerror(errno);
        else
            m_bytes = static_cast<const char*>(at);
    }
    ~MappedFile() {
        if (m_bytes) munmap(const_cast<char*>(m_bytes), m_size);
        if (m_file >= 0) close(m_file);
    }
    MappedFile(const MappedFile&) = delete;
    MappedFile& operator=(const MappedFile&) = delete;

    const std::string& problem() const { return m_problem; }
    std::string_view bytes() const { return {m_bytes, m_size}; }

private:
    int m_file;
    const char* m_bytes = nullptr;
    std::size_t m_size = 0;
    std::string m_problem;
};

std::string counted(const std::map<std::string, int>& kinds) {
    std::string text;
    for (const auto& [kind, count] : kinds)
        text += fmt::format("{}{} {}", text.empty() ? "" : ", ", count, kind);
    return text;
}

} // namespace

std::vector<std::string> DxfImportReport::lines() const {
    std::vector<std::string> lines;
    if (!kept.empty()) lines.push_back(fmt::format("Kept as they came, but not shown: {}.", counted(kept)));
    if (!leftOut.empty()) lines.push_back(fmt::format("Left out: {}.", counted(leftOut)));
    for (const std::string& problem : problems) {
        if (lines.size() == kMostLines) {
            lines.push_back("There is more of the kind.");
            break;
        }
        lines.push_back(problem + ".");
    }
    return lines;
}

bool isExchangeFile(const std::string& path) {
    return asciiEqual(std::filesystem::path(path).extension().string(), ".dxf");
}

std::variant<std::unique_ptr<AcDbDatabase>, std::string>
importDxfBytes(std::string_view bytes, const std::string& name, DxfImportReport& report) {
    DxfInput input(bytes);
    if (!input.looksLikeDrawing())
        return complaint("open", name, "it is not a DXF file (a section was expected at its beginning)");
    auto database = std::make_unique<AcDbDatabase>();
    database->undoLog().setRecording(false);
    DxfDrawingReader reader(input, *database, report);
    reader.read();
    database->undoLog().setRecording(true);
    return database;
}

std::variant<std::unique_ptr<AcDbDatabase>, std::string> importDxf(const std::string& path,
                                                                   DxfImportReport& report) {
    std::string problem = whyNotReadable(path);
    if (problem.empty()) {
        const MappedFile file(path);
        if (file.problem().empty()) return importDxfBytes(file.bytes(), path, report);
        problem = file.problem();
    }
    return complaint("open", path, problem);
}

} // namespace veldrin
