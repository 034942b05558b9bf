#include "files/DrawingCheck.h"

#include "drawing/AcDbDatabase.h"
#include "drawing/SlotTable.h"
#include "drawing/UndoLog.h"
#include "files/DamagedFile.h"
#include "files/DrawingFile.h"
#include "files/DrawingFormat.h"
#include "files/DrawingHold.h"
#include "files/DrawingReader.h"
#include "files/DrawingSalvage.h"
#include "files/FileReplacement.h"
#include "files/drawing_file_checks.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <optional>
#include <string_view>
#include <system_error>

namespace fs = std::filesystem;

namespace veldrin {

namespace {

constexpr int kMostEngineProblems = 20;

int countObjects(const AcDbDatabase& database) {
    const SlotTable& slots = database.slots();
    int count = 0;
    for (std::uint32_t number = 1; number < slots.size(); ++number) count += slots[number].erased ? 0 : 1;
    return count;
}

// The engine answers "ok", or lines of which those with stars are headings.
void addLines(std::string_view text, std::vector<std::string>& problems) {
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        if (line != "ok" && !line.starts_with("***")) problems.push_back(fmt::format("the file: {}", line));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
    }
}

// What the database engine finds wrong with the file itself. False when there is something.
bool checkPages(const std::string& path, std::vector<std::string>& problems) {
    SqlFile file(path, SqlFile::Mode::kExisting);
    const std::size_t before = problems.size();
    {
        SqlStatement rows(file, fmt::format("pragma integrity_check({})", kMostEngineProblems));
        while (rows.step()) addLines(rows.text(0), problems);
    }
    if (file.ok() && !hasWholeLength(file, path)) problems.emplace_back("the file: its end is missing");
    if (!file.ok() && problems.size() == before) problems.push_back("the file: " + file.error());
    return problems.size() == before;
}

struct Reading {
    std::unique_ptr<AcDbDatabase> database; // null when nothing could be read
    std::vector<std::string> told;
};

Reading readWhatIsThere(const std::string& path) {
    Reading reading;
    auto database = std::make_unique<AcDbDatabase>(false);
    database->undoLog().setRecording(false);
    SqlFile file(path, SqlFile::Mode::kExisting);
    file.run("begin");
    if (checkDrawingFormat(file) && DrawingReader(file, *database).readWhatIsThere(reading.told))
        reading.database = std::move(database);
    else
        reading.told.push_back(file.error());
    return reading;
}

// A name for the damaged file at which there is nothing.
std::string nameForDamaged(const fs::path& path) {
    for (int n = 0;; ++n) {
        fs::path name = path;
        name.replace_extension(n == 0 ? ".damaged" : fmt::format(".damaged-{}", n));
        name += path.extension();
        std::error_code none;
        if (!fs::exists(name, none)) return name.string();
    }
}

// Why the file is no drawing that could be checked; empty when it is one, however damaged.
std::string whyNoDrawing(const std::string& path) {
    std::string problem = whyNotReadable(path);
    if (!problem.empty()) return problem;
    std::error_code none;
    const std::uintmax_t size = fs::file_size(path, none);
    const std::uintmax_t stated = statedLength(path);
    SqlFile file(path, SqlFile::Mode::kExisting);
    if (checkDrawingFormat(file)) return {};
    if (size >= stated || file.isBusy()) return file.error();
    return fmt::format("{} (its end is missing, {} of {} bytes are there)", file.error(), size, stated);
}

// The mended drawing takes the damaged one's place, which moves aside.
std::string exchange(const std::string& path, AcDbDatabase& mended, std::string& kept) {
    const std::string fresh = path + ".mended";
    if (const auto problem = saveDrawingCopy(mended, fresh)) return *problem;
    kept = nameForDamaged(path);
    std::error_code error;
    fs::rename(path, kept, error);
    if (!error) fs::rename(fresh, path, error);
    if (!error) return {};
    std::error_code none;
    fs::remove(fresh, none);
    return fmt::format("Cannot replace {}: {}.", path, error.message());
}

} // namespace

DrawingReport checkDrawing(const std::string& path) {
    DrawingReport report;
    const std::string target = realPath(path);
    if (const std::string problem = whyNoDrawing(target); !problem.empty()) {
        report.failure = complaint("check", path, problem);
        return report;
    }
    checkPages(target, report.problems);
    Reading reading = readWhatIsThere(target);
    report.problems.insert(report.problems.end(), reading.told.begin(), reading.told.end());
    if (reading.database) report.objects = countObjects(*reading.database);
    return report;
}

DrawingReport repairDrawing(const std::string& path) {
    DrawingReport report;
    const std::string target = realPath(path);
    if (const std::string problem = whyNotReadable(target); !problem.empty()) {
        report.failure = complaint("repair", path, problem);
        return report;
    }
    const DrawingHold::Attempt attempt = DrawingHold::take(target);
    if (!attempt.holder.empty()) {
        report.failure = complaint("repair", path, "it is in use by " + attempt.holder);
        return report;
    }
    const Scratch lengthened(target, ".lengthened");
    const Scratch salvaged(target, ".salvaged");
    std::vector<std::string> pages;
    std::string source = target;
    if (!checkPages(target, pages)) {
        source = salvaged.path();
        std::string problem = copyLengthened(target, lengthened.path());
        if (problem.empty()) problem = salvageRows(lengthened.path(), source, report.problems);
        if (!problem.empty()) {
            report.failure = complaint("repair", path, problem);
            return report;
        }
    }
    Reading reading = readWhatIsThere(source);
    report.problems.insert(report.problems.end(), reading.told.begin(), reading.told.end());
    if (!reading.database) {
        report.failure = complaint("repair", path, report.problems.back());
        return report;
    }
    report.objects = countObjects(*reading.database);
    if (pages.empty() && report.problems.empty()) return report;
    if (report.problems.empty()) report.problems = pages; // nothing but order was lost
    report.failure = exchange(target, *reading.database, report.kept);
    return report;
}

} // namespace veldrin
