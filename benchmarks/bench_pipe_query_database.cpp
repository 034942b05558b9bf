// Opening Query Pipe on a project of a million pipes, and closing it again: with Lisp functions that answer
// at once, and with those of the Lisp layer.
//
// The floor is what the dialog reads, asked of the bare engine on the same file by prepared statements.

#include "BenchSession.h"
#include "lisp/Engine.h"
#include "projects/ProjectMaker.h"
#include "require.h"

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <unistd.h>

namespace {

namespace fs = std::filesystem;

constexpr int kPipes = 1'000'000;
constexpr int kQueried = 500'000;

struct Closer {
    void operator()(sqlite3* handle) const { sqlite3_close_v2(handle); }
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using Handle = std::unique_ptr<sqlite3, Closer>;
using Statement = std::unique_ptr<sqlite3_stmt, Closer>;

Handle openBare(const std::string& path) {
    sqlite3* handle = nullptr;
    require(sqlite3_open_v2(path.c_str(), &handle, SQLITE_OPEN_READWRITE, nullptr) == SQLITE_OK,
            "cannot open");
    return Handle(handle);
}

void run(sqlite3* handle, const std::string& sql) {
    require(sqlite3_exec(handle, sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK,
            sqlite3_errmsg(handle));
}

// A project with its pipes, and a drawing of it that is the current one. Pipes lie in 20 drawings.
class QuerySession {
public:
    static QuerySession& instance() {
        static QuerySession session;
        return session;
    }
    const std::string& path() const { return m_path; }

    void lisp(const std::string& code) {
        require(static_cast<bool>(m_session.host.lisp().runText(code)), code.c_str());
    }

private:
    QuerySession() : m_folder("/tmp/veldrin-query-bench-" + std::to_string(getpid())) {
        m_path = veldrin::makeProject(m_folder, "Bench");
        const Handle file = openBare(m_path);
        run(file.get(), "begin");
        run(file.get(), "with recursive n(i) as (select 1 union all select i + 1 from n where i < " +
                            std::to_string(kPipes) +
                            ") insert into tblPipe(ixPipe, ixLayerSystem, ixPipeType, dSize, dX1, dY1, dX2, "
                            "dY2, sDrawing, "
                            "sOffsetZ, sOffsetY, iAlignmentPointNumber, ixPipeSize, ixPipeSizingTable) "
                            "select i, 1 + i % 3, 1, "
                            "0.785, i % 1000, i / 1000, i % 1000 + 24.5, i / 1000, 'floor-' || (i % 20) || "
                            "'.vqd', 'c', 'c', "
                            "i % 5, 1 + i % 11, 1 from n");
        run(file.get(),
            "with recursive n(i) as (select 1 union all select i + 1 from n where i < " +
                std::to_string(kPipes) +
                ") insert into tblPipeSum(ixPipe, ixPipeSumCategory, bFixed, dValue) select i, 3, 0, "
                "61.25 from n");
        run(file.get(), "commit");
        lisp("(vq_plumb-setDoDocumentActivated nil)");
        lisp("(vd-save-as \"" + m_folder + "/plan.vqd\")");
    }
    ~QuerySession() {
        std::error_code none;
        fs::remove_all(m_folder, none);
    }

    std::string m_folder;
    std::string m_path;
    BenchSession m_session;
};

// The dialog's questions, prepared once.
class BareQueries {
public:
    explicit BareQueries(const std::string& path) : m_file(openBare(path)) {
        for (const char* sql : kOnce) m_once.push_back(prepare(sql));
        m_categories =
            prepare("select ixPipeSumCategory, sName from tblPipeSumCategory where ixPipeType = ?1 "
                    "order by iOrder");
        m_sum = prepare("select ixPipeSum, bFixed, dValue from tblPipeSum where ixPipeSumCategory = ?2 and "
                        "ixPipe = ?1 and bFixed = ?3");
    }

    std::size_t ask(int pipe) {
        std::size_t bytes = 0;
        for (const Statement& statement : m_once) bytes += read(statement.get(), {pipe});
        std::vector<int> categories;
        sqlite3_bind_int(m_categories.get(), 1, 1);
        while (sqlite3_step(m_categories.get()) == SQLITE_ROW)
            categories.push_back(sqlite3_column_int(m_categories.get(), 0));
        sqlite3_reset(m_categories.get());
        for (const int isFixed : {-1, 0})
            for (const int category : categories) bytes += read(m_sum.get(), {pipe, category, isFixed});
        return bytes;
    }

private:
    static constexpr const char* kOnce[] = {
        "select * from tblPipe where ixPipe = ?1",
        "select ixLayerSystem, sDescription from tblLayerSystem",
        "select dNumber from tblGlobal where sKey = 'EXTERIOR LINING WIDTH'",
        "select ixPipeSize from tblPipeSize where ixPipeType = 1 limit 1",
        "select ixPipeSize, sLabel from tblPipeSize where ixPipeType = 1 order by dInteriorDiameter",
        "select ixPipeSizingTable, sName from tblPipeSizingTable where ixPipeType = 1 and bActive = -1 order "
        "by "
        "iSortOrder"};

    Statement prepare(const char* sql) {
        sqlite3_stmt* statement = nullptr;
        require(sqlite3_prepare_v2(m_file.get(), sql, -1, &statement, nullptr) == SQLITE_OK,
                sqlite3_errmsg(m_file.get()));
        return Statement(statement);
    }
    static std::size_t read(sqlite3_stmt* statement, std::initializer_list<int> values) {
        std::size_t bytes = 0;
        int at = 0;
        for (const int value : values)
            if (at < sqlite3_bind_parameter_count(statement)) sqlite3_bind_int(statement, ++at, value);
        while (sqlite3_step(statement) == SQLITE_ROW)
            for (int column = 0; column < sqlite3_column_count(statement); ++column) {
                sqlite3_column_text(statement, column);
                bytes += static_cast<std::size_t>(sqlite3_column_bytes(statement, column));
            }
        sqlite3_reset(statement);
        return bytes;
    }

    Handle m_file;
    std::vector<Statement> m_once;
    Statement m_categories;
    Statement m_sum;
};

void BM_BareQueries_Floor(benchmark::State& state) {
    BareQueries queries(QuerySession::instance().path());
    int pipe = kQueried;
    for (auto _ : state) require(queries.ask(pipe++) > 0, "nothing was read");
}
BENCHMARK(BM_BareQueries_Floor)->Unit(benchmark::kMicrosecond);

void openAndCancel(benchmark::State& state) {
    QuerySession& session = QuerySession::instance();
    session.lisp("(setq pipe " + std::to_string(kQueried) + ")");
    for (auto _ : state) session.lisp("(vq_plumb-pipeSum (setq pipe (1+ pipe)) nil)");
}

void BM_QueryPipe(benchmark::State& state) {
    QuerySession::instance().lisp(R"(
        (defun pipe-query-getNumber () 0)
        (defun pipe-usableTypes-withPipe-arx (pipe all sized) '(("startlist" 1) ("Cold water")))
        (defun plumb-pipeSum-StaticValues (a b c) '("0-0" "0-0"))
        (defun pipeSumCategory-convertFlow (pipe) 54.5)
        (defun pipe-query-elevationTileCheck (pipe) 0))");
    openAndCancel(state);
}
BENCHMARK(BM_QueryPipe)->Unit(benchmark::kMicrosecond);

void BM_QueryPipe_WithLispLayer(benchmark::State& state) {
    QuerySession::instance().lisp("(load (findfile \"veldrin.lsp\"))");
    openAndCancel(state);
}
BENCHMARK(BM_QueryPipe_WithLispLayer)->Unit(benchmark::kMicrosecond);

} // namespace
