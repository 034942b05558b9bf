// vd-select vd-execute vd-project-database vd-new-project vd-repair

#include "dao/CDaoDatabase.h"
#include "editor/CommandLine.h"
#include "files/DrawingCheck.h"
#include "projects/ProjectCheck.h"
#include "projects/ProjectFiles.h"
#include "projects/ProjectMaker.h"
#include "runtime/Host.h"
#include "scripting/drawing_values.h"
#include "scripting/tables.h"

namespace veldrin::scripting {

namespace {

using lisp::Args;
using lisp::Engine;
using lisp::Error;
using lisp::Value;

void tell(const std::string& line) {
    CommandLine& commandLine = Host::current().commandLine();
    commandLine.freshLine();
    commandLine.print(line + "\n");
}

// Runs what may fail with the database engine's text, which is then the Lisp error's. The engine waits a
// second for another user's lock; a script waits longer, since nobody repeats its call.
template<class Operation>
auto withDatabase(Args args, Operation operation) {
    constexpr int kAttempts = 20;
    const std::string path = args.string(0);
    const std::string sql = args.string(1);
    if (path.empty()) throw Error("there is no project database");
    for (int attempt = 1;; ++attempt) {
        try {
            CDaoDatabase database;
            database.OpenToRead(path);
            return operation(database, sql);
        } catch (const CDaoException& failure) {
            const bool isLock = failure.number() == kDaoLocked || failure.number() == kDaoTableLocked;
            if (!isLock || attempt == kAttempts) throw Error(failure.GetErrorMessage());
        }
    }
}

Value toLisp(const COleVariant& value) {
    if (value.isWhole()) return Value::integer(static_cast<std::int32_t>(value.whole()));
    if (value.isReal()) return Value::real(value.real());
    if (value.vt() == VT_BSTR) return Value::text(value.text());
    return {};
}

Value select(Engine&, Args args) {
    return withDatabase(args, [](CDaoDatabase& database, const std::string& sql) {
        const RowArray rows = database.Select(sql);
        lisp::ListBuilder list;
        for (std::size_t row = 0; row < rows.rows(); ++row) {
            lisp::ListBuilder record;
            for (std::size_t column = 0; column < rows.columns(); ++column)
                record.add(Value::cons(Value::text(rows.name(column)), toLisp(rows.at(row, column))));
            list.add(record.finish());
        }
        return list.finish();
    });
}

Value execute(Engine&, Args args) {
    return withDatabase(args, [](CDaoDatabase& database, const std::string& sql) {
        return Value::integer(static_cast<std::int32_t>(database.Execute(sql)));
    });
}

Value projectDatabase(Engine&, Args) {
    const std::string path = currentProjectDatabase();
    return path.empty() ? Value() : Value::text(path);
}

Value newProject(Engine&, Args args) {
    try {
        return Value::text(makeProject(args.string(0), args.string(1)));
    } catch (const CDaoException& failure) {
        tell(failure.GetErrorMessage());
        return {};
    }
}

Value repair(Engine&, Args args) {
    const std::string path = args.string(0);
    std::string failure;
    std::string kept;
    std::vector<std::string> problems;
    if (looksLikeProject(path)) {
        ProjectReport report = repairProject(path);
        failure = report.failure;
        kept = report.kept;
        problems = std::move(report.problems);
    } else {
        DrawingReport report = repairDrawing(path);
        failure = report.failure;
        kept = report.kept;
        problems = std::move(report.problems);
    }
    if (!failure.empty()) {
        tell(failure);
        return {};
    }
    if (!kept.empty()) tell(path + " was mended; the damaged file is " + kept + ".");
    for (const std::string& problem : problems) tell("  " + problem);
    return Value::t();
}

constexpr lisp::BuiltinRow rows[] = {
    {"vd-select", 2, 2, select},
    {"vd-execute", 2, 2, execute},
    {"vd-project-database", 0, 0, projectDatabase},
    {"vd-new-project", 2, 2, newProject},
    {"vd-repair", 1, 1, repair},
};

} // namespace

std::span<const lisp::BuiltinRow> projectFunctions() {
    return rows;
}

} // namespace veldrin::scripting
