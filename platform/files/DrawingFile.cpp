#include "files/DrawingFile.h"

#include "drawing/SlotTable.h"
#include "drawing/UndoLog.h"
#include "files/DrawingFormat.h"
#include "files/DrawingReader.h"
#include "files/DrawingWriter.h"
#include "files/FileReplacement.h"
#include "files/drawing_file_checks.h"

#include <fmt/format.h>

#include <filesystem>
#include <system_error>

namespace fs = std::filesystem;

namespace veldrin {

namespace {

// A new file is nobody's until it takes its place, so it needs no journal; it must be on the disk by then.
constexpr const char* kNewFile = "pragma page_size = 16384; pragma journal_mode = off; pragma synchronous = "
                                 "full; pragma locking_mode = exclusive";
constexpr const char* kOldFile = "pragma journal_mode = delete; pragma synchronous = full";

std::string saveWhole(const AcDbDatabase& database, const std::string& target, const std::string& saveId) {
    FileReplacement replacement(target);
    SqlFile file(replacement.path(), SqlFile::Mode::kCreate);
    file.run(kNewFile);
    {
        SqlTransaction transaction(file);
        makeDrawingFormat(file);
        DrawingWriter(file, database).writeAll();
        writeSaveId(file, saveId);
        transaction.commit();
    }
    return file.close() ? replacement.commit() : file.error();
}

std::string saveChanges(const AcDbDatabase& database, SqlFile& file, const std::string& saveId) {
    file.run(kOldFile);
    {
        SqlTransaction transaction(file);
        // Somebody else may have saved since the mark was looked at.
        if (readSaveId(file) != database.fileLink().saveId) file.fail("another program has just changed it");
        DrawingWriter(file, database).writeChanges();
        writeSaveId(file, saveId);
        transaction.commit();
    }
    file.close();
    return file.error();
}

std::string keepPrevious(SqlFile& file, const std::string& target) {
    const std::string previous = fs::path(target).replace_extension(".bak").string();
    std::string problem = whyNotWritable(previous);
    if (problem.empty()) {
        FileReplacement replacement(previous);
        SqlFile copy(replacement.path(), SqlFile::Mode::kCreate);
        copy.run(kNewFile);
        file.copyInto(copy);
        problem = copy.close() ? replacement.commit() : copy.error();
    }
    if (problem.empty()) return {};
    return fmt::format("the previous drawing cannot be kept as {}: {}", previous, problem);
}

std::string save(const AcDbDatabase& database, const std::string& target, const std::string& saveId) {
    std::string problem = whyNotWritable(target);
    std::error_code none;
    if (!problem.empty() || !fs::exists(target, none))
        return problem.empty() ? saveWhole(database, target, saveId) : problem;
    {
        const DrawingFileLink& link = database.fileLink();
        SqlFile file(target, SqlFile::Mode::kExisting);
        const bool isDrawing = checkDrawingFormat(file);
        const bool isOurs = isDrawing && link.path == target && readSaveId(file) == link.saveId;
        if (file.isBusy()) return file.error();
        if (isDrawing && !(isOurs && link.previousKept)) problem = keepPrevious(file, target);
        if (!problem.empty()) return problem;
        FileReplacement::dropLeftovers(target);
        if (isOurs) return saveChanges(database, file, saveId);
    }
    return saveWhole(database, target, saveId);
}

// What is open for write goes on being changed after the save.
void settle(AcDbDatabase& database, DrawingFileLink link) {
    SlotTable& slots = database.slots();
    for (std::uint32_t number = 1; number < slots.size(); ++number)
        slots[number].changed = slots[number].writer;
    database.setFileLink(std::move(link));
    database.setModified(false);
}

std::string readFile(AcDbDatabase& database, const std::string& path, std::string& saveId) {
    SqlFile file(path, SqlFile::Mode::kExisting);
    file.run("begin"); // all that is read is of one save
    if (checkDrawingFormat(file) && !hasWholeLength(file, path))
        file.fail("it is damaged (its end is missing)");
    saveId = readSaveId(file);
    if (file.ok()) DrawingReader(file, database).read();
    return file.error();
}

} // namespace

std::optional<std::string> saveDrawing(AcDbDatabase& database, const std::string& path) {
    const std::string target = realPath(path);
    const std::string saveId = newSaveId();
    const std::string problem = save(database, target, saveId);
    if (!problem.empty()) return complaint("save", path, problem);
    settle(database, {target, saveId, true, {}});
    return std::nullopt;
}

std::optional<std::string> saveDrawingCopy(const AcDbDatabase& database, const std::string& path) {
    const std::string target = realPath(path);
    std::string problem = whyNotWritable(target);
    if (problem.empty()) problem = saveWhole(database, target, newSaveId());
    if (!problem.empty()) return complaint("save", path, problem);
    return std::nullopt;
}

std::variant<std::unique_ptr<AcDbDatabase>, std::string> openDrawing(const std::string& path) {
    const std::string target = realPath(path);
    auto database = std::make_unique<AcDbDatabase>(false);
    std::string saveId;
    database->undoLog().setRecording(false);
    std::string problem = whyNotReadable(target);
    if (problem.empty()) problem = readFile(*database, target, saveId);
    database->undoLog().setRecording(true);
    if (!problem.empty()) return complaint("open", path, problem);
    settle(*database, {target, saveId, false, {}});
    std::error_code none;
    database->setFilename(fs::absolute(path, none).string());
    return database;
}

} // namespace veldrin
