#include "drawing/AcDbDatabase.h"
#include "drawing/UndoLog.h"
#include "editor/CommandLine.h"
#include "editor/DocumentManager.h"
#include "editor/VariableTable.h"
#include "graphics/DrawingExtents.h"
#include "runtime/Host.h"
#include "ui/UiBackend.h"

#include <chrono>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <fmt/format.h>
#include <pwd.h>
#include <sys/utsname.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace veldrin {

namespace {

constexpr const char* kHostVersion = "17.0";

struct Row {
    const char* name;
    VariableKind kind;
    bool needsDrawing;
    VariableValue (*compute)(Host& host, Document* document);
};

std::string folderText(const fs::path& folder) {
    std::string text = folder.string();
    if (text.empty() || text.back() != '/') text += '/';
    return text;
}

VariableValue drawingFolder(Host&, Document* document) {
    std::error_code error;
    if (document->isTitled()) return folderText(fs::path(document->path()).parent_path());
    return folderText(fs::current_path(error));
}

VariableValue loginName(Host&, Document*) {
    const passwd* user = getpwuid(geteuid());
    return std::string(user ? user->pw_name : "");
}

VariableValue temporaryFolder(Host&, Document*) {
    std::error_code error;
    const fs::path folder = fs::temp_directory_path(error);
    return folderText(error ? fs::path("/tmp") : folder);
}

VariableValue machineName(Host&, Document*) {
    utsname name{};
    uname(&name);
    return fmt::format("{} {}", name.sysname, name.machine);
}

// Language of the messages, from the environment as programs on this system read it.
VariableValue language(Host&, Document*) {
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"})
        if (const char* value = std::getenv(name); value && std::strlen(value) >= 2 && value[0] != 'C')
            return std::string(value, 2);
    return std::string("en");
}

struct Moment {
    std::tm day{};
    double seconds = 0.0; // since midnight, local time
};

Moment now() {
    using namespace std::chrono;
    const auto time = system_clock::now();
    const std::time_t whole = system_clock::to_time_t(time);
    Moment moment;
    localtime_r(&whole, &moment.day);
    const double fraction = duration<double>(time - system_clock::from_time_t(whole)).count();
    moment.seconds = moment.day.tm_hour * 3600.0 + moment.day.tm_min * 60.0 + moment.day.tm_sec + fraction;
    return moment;
}

// Digits as YYYYMMDD.HHMMSShh.
VariableValue calendarDate(Host&, Document*) {
    const Moment moment = now();
    const double day =
        (moment.day.tm_year + 1900) * 10000.0 + (moment.day.tm_mon + 1) * 100.0 + moment.day.tm_mday;
    const double clock = moment.day.tm_hour * 10000.0 + moment.day.tm_min * 100.0 +
                         (moment.seconds - moment.day.tm_hour * 3600.0 - moment.day.tm_min * 60.0);
    return day + clock / 1e6;
}

// Julian day number of the local date, and the part of the day that has gone.
VariableValue julianDate(Host&, Document*) {
    const Moment moment = now();
    const int month = moment.day.tm_mon + 1;
    const int shift = (14 - month) / 12;
    const int year = moment.day.tm_year + 1900 + 4800 - shift;
    const int monthFromMarch = month + 12 * shift - 3;
    const int day = moment.day.tm_mday + (153 * monthFromMarch + 2) / 5 + 365 * year + year / 4 - year / 100 +
                    year / 400 - 32045;
    return day + moment.seconds / 86400.0;
}

VariableValue milliseconds(Host&, Document*) {
    using namespace std::chrono;
    const auto count =
        duration_cast<std::chrono::milliseconds>(steady_clock::now().time_since_epoch()).count();
    return static_cast<std::int32_t>(count & 0x7FFFFFFF);
}

// 1 a command, 2 one inside another, 8 a modal window.
VariableValue activeCommands(Host& host, Document*) {
    const std::size_t commands = host.documents().activities().commandNames().size();
    std::int32_t bits = commands > 0 ? 1 : 0;
    if (commands > 1) bits |= 2;
    if (host.ui().openWindows() > 0) bits |= 8;
    return bits;
}

VariableValue commandNames(Host& host, Document*) {
    return fmt::format("{}", fmt::join(host.documents().activities().commandNames(), "'"));
}

// 1 undo is switched on, 4 a form at the prompt is one step, 8 a group is open.
VariableValue undoState(Host&, Document* document) {
    const UndoLog& log = document->database()->undoLog();
    return std::int32_t{4 | (log.isRecording() ? 1 : 0) | (log.isGroupOpen() ? 8 : 0)};
}

constexpr double kNoExtents = 1e20; // of an empty drawing, turned inside out

VariableValue leastPoint(Host&, Document* document) {
    const AcDbExtents extents = drawnExtents(*document->database());
    return extents.isEmpty() ? AcGePoint3d(kNoExtents, kNoExtents, kNoExtents) : extents.minPoint();
}

VariableValue greatestPoint(Host&, Document* document) {
    const AcDbExtents extents = drawnExtents(*document->database());
    return extents.isEmpty() ? AcGePoint3d(-kNoExtents, -kNoExtents, -kNoExtents) : extents.maxPoint();
}

template<class Number>
VariableValue numberOf(Number number) {
    return static_cast<std::int32_t>(number);
}

const Row kRows[] = {
    {"ACADVER", VariableKind::Text, false, [](Host&, Document*) -> VariableValue { return kHostVersion; }},
    {"CDATE", VariableKind::Real, false, calendarDate},
    {"CMDACTIVE", VariableKind::Integer, false, activeCommands},
    {"CMDNAMES", VariableKind::Text, false, commandNames},
    {"DATE", VariableKind::Real, false, julianDate},
    {"DBMOD", VariableKind::Integer, true,
     [](Host&, Document* document) { return numberOf(document->database()->isModified() ? 1 : 0); }},
    {"DWGNAME", VariableKind::Text, true,
     [](Host&, Document* document) -> VariableValue { return document->docTitle(); }},
    {"DWGPREFIX", VariableKind::Text, true, drawingFolder},
    {"DWGTITLED", VariableKind::Integer, true,
     [](Host&, Document* document) { return numberOf(document->isTitled() ? 1 : 0); }},
    {"EXTMAX", VariableKind::Point3d, true, greatestPoint},
    {"EXTMIN", VariableKind::Point3d, true, leastPoint},
    {"LASTPROMPT", VariableKind::Text, false,
     [](Host& host, Document*) -> VariableValue { return host.commandLine().lastLine(); }},
    {"LOCALE", VariableKind::Text, false, language},
    {"LOGINNAME", VariableKind::Text, false, loginName},
    {"MILLISECS", VariableKind::Integer, false, milliseconds},
    {"PLATFORM", VariableKind::Text, false, machineName},
    {"SAVENAME", VariableKind::Text, true,
     [](Host&, Document* document) -> VariableValue {
         return document->isTitled() ? document->path() : std::string();
     }},
    {"TEMPPREFIX", VariableKind::Text, false, temporaryFolder},
    {"UNDOCTL", VariableKind::Integer, true, undoState},
    {"WRITESTAT", VariableKind::Integer, true,
     [](Host&, Document* document) { return numberOf(document->isReadOnly() ? 0 : 1); }},
};

} // namespace

void addComputedVariables(std::vector<VariableRow>& rows) {
    for (const Row& r : kRows) {
        VariableRow row;
        row.name = r.name;
        row.kind = r.kind;
        row.home = VariableHome::Computed;
        row.readOnly = true;
        row.needsDrawing = r.needsDrawing;
        row.compute = r.compute;
        rows.push_back(std::move(row));
    }
}

} // namespace veldrin
