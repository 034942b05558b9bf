// A drawing file with rows that are any bytes, or any bytes as the file itself. It may be refused or be read
// with losses; what was read can be drawn, and saves to a file that opens again.
//
// An input that begins as a database does is the file. Any other is a list of rows that go into the file of
// an empty drawing: a letter, then
//   O handle(2) owner(2) length(2) name length(2) bytes   an object of the class of that name
//   P handle(2) length(2) bytes                     a picture
//   H name(1) length(2) bytes                       a header variable by its place among those that are there
//   D handle(2)                                     an object less
#include "HostWithModule.h"
#include "drawing/AcDbBlockTable.h"
#include "drawing/AcDbEntity.h"
#include "drawing/acdb.h"
#include "files/DrawingCheck.h"
#include "files/DrawingFile.h"
#include "files/SqlFile.h"
#include "graphics/Recorder.h"

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using veldrin::SqlFile;
using veldrin::SqlStatement;

// A folder in memory with the file of an empty drawing.
class Workplace {
public:
    static Workplace& instance() {
        static Workplace one;
        return one;
    }
    std::string file(const char* name) const { return (m_folder / name).string(); }
    const std::vector<std::string>& headerNames() const { return m_headerNames; }

private:
    Workplace() {
        std::string name = "/dev/shm/veldrin-fuzz-XXXXXX";
        m_folder = mkdtemp(name.data());
        HostWithModule::instance();
        AcDbDatabase empty;
        if (veldrin::saveDrawing(empty, file("empty.vqd"))) std::abort();
        SqlFile saved(file("empty.vqd"), SqlFile::Mode::kExisting);
        SqlStatement names(saved, "select name from header order by name");
        while (names.step()) m_headerNames.emplace_back(names.text(0));
    }
    ~Workplace() { fs::remove_all(m_folder); }

    fs::path m_folder;
    std::vector<std::string> m_headerNames;
};

// Numbers and bytes from the input; zeros behind its end.
class Bytes {
public:
    explicit Bytes(std::string_view data) : m_data(data) {}
    bool atEnd() const { return m_data.empty(); }
    int byte() {
        if (m_data.empty()) return 0;
        const int value = static_cast<std::uint8_t>(m_data.front());
        m_data.remove_prefix(1);
        return value;
    }
    std::int64_t number() {
        const int low = byte();
        return low + 256 * byte();
    }
    std::string_view bytes() {
        const std::string_view taken = m_data.substr(0, static_cast<std::size_t>(number()));
        m_data.remove_prefix(taken.size());
        return taken;
    }

private:
    std::string_view m_data;
};

void putRows(Bytes input, const std::string& path) {
    SqlFile file(path, SqlFile::Mode::kExisting);
    file.run("pragma journal_mode = off; pragma synchronous = off; begin");
    SqlStatement object(file, "insert or replace into objects values(?1, ?2, ?3, ?4)");
    SqlStatement picture(file, "insert or replace into pictures values(?1, ?2)");
    SqlStatement header(file, "update header set value = ?2 where name = ?1");
    SqlStatement less(file, "delete from objects where handle = ?1");
    const auto& names = Workplace::instance().headerNames();
    while (!input.atEnd() && file.ok()) {
        switch (input.byte()) {
        case 'O': {
            object.bind(1, input.number()).bind(3, input.number());
            const std::string_view name = input.bytes();
            object.bind(2, name).bindBytes(4, input.bytes()).execute();
            break;
        }
        case 'P': picture.bind(1, input.number()).bindBytes(2, input.bytes()).execute(); break;
        case 'H': {
            const std::string& name = names[static_cast<std::size_t>(input.byte()) % names.size()];
            header.bind(1, std::string_view(name)).bindBytes(2, input.bytes()).execute();
            break;
        }
        case 'D': less.bind(1, input.number()).execute(); break;
        default: break;
        }
    }
    file.run("commit");
}

void drawAll(AcDbDatabase& drawing) {
    const AcDbObjectPointer<AcDbBlockTableRecord> space(drawing.modelSpaceId());
    if (!space) return;
    for (const AcDbObjectId id : space->entityIds()) {
        const AcDbObjectPointer<AcDbEntity> entity(id);
        if (!entity) continue;
        veldrin::DisplayList list;
        veldrin::Recorder recorder(list);
        veldrin::drawEntity(*entity.object(), recorder);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Workplace& workplace = Workplace::instance();
    const std::string path = workplace.file("input.vqd");
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    if (input.starts_with("SQLite format 3")) {
        std::ofstream(path, std::ios::binary) << input;
    } else {
        fs::copy_file(workplace.file("empty.vqd"), path, fs::copy_options::overwrite_existing);
        putRows(Bytes(input), path);
    }
    auto opened = veldrin::openDrawing(path);
    if (auto* drawing = std::get_if<std::unique_ptr<AcDbDatabase>>(&opened)) {
        drawAll(**drawing);
        const std::string copy = workplace.file("copy.vqd");
        if (veldrin::saveDrawingCopy(**drawing, copy)) std::abort();
        if (veldrin::openDrawing(copy).index() != 0) std::abort();
    } else {
        static_cast<void>(veldrin::checkDrawing(path)); // that it ends is what counts
    }
    return 0;
}
