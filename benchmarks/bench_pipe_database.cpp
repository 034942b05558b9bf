// What the project database adds to the engine under it, on a million pipes: seeks, walking an index, a
// selection, and single writes through record objects.
//
// The floor is a bare program on the same engine and the same file: prepared statements, values read into a
// struct, the same safety. Seeks run in a read transaction on both sides, so that they do not measure locks.

#include "BenchSession.h"
#include "database/CDBConnection.h"
#include "database/tables/tblPipe.h"
#include "database/tables/tblPipeSum.h"
#include "projects/ProjectMaker.h"
#include "require.h"

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include <unistd.h>

namespace {

namespace fs = std::filesystem;

constexpr int kPipes = 1'000'000;
constexpr int kSums = 100'000;
constexpr int kSelected = 100'000;

// The engine as a bare program uses it.
class Bare {
public:
    explicit Bare(const std::string& path) {
        require(sqlite3_open_v2(path.c_str(), &m_handle, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX,
                                nullptr) == SQLITE_OK,
                "cannot open");
        run("pragma synchronous = full; pragma cache_size = -16384; pragma temp_store = memory");
    }
    ~Bare() { sqlite3_close_v2(m_handle); }
    Bare(const Bare&) = delete;
    Bare& operator=(const Bare&) = delete;

    void run(const char* sql) {
        require(sqlite3_exec(m_handle, sql, nullptr, nullptr, nullptr) == SQLITE_OK,
                sqlite3_errmsg(m_handle));
    }
    sqlite3_stmt* prepare(const char* sql) {
        sqlite3_stmt* statement = nullptr;
        require(sqlite3_prepare_v3(m_handle, sql, -1, SQLITE_PREPARE_PERSISTENT, &statement, nullptr) ==
                    SQLITE_OK,
                sqlite3_errmsg(m_handle));
        return statement;
    }

private:
    sqlite3* m_handle = nullptr;
};

// A record by the kinds of its columns, as a struct of the same fields would be read.
struct BareRecord {
    enum class Kind { kNumber, kReal, kText };
    std::vector<Kind> kinds;
    std::vector<std::int64_t> numbers;
    std::vector<double> reals;
    std::vector<std::string> texts;

    explicit BareRecord(sqlite3_stmt* statement) {
        for (int i = 0; i < sqlite3_column_count(statement); ++i) {
            const std::string type = sqlite3_column_decltype(statement, i);
            kinds.push_back(type == "DOUBLE"           ? Kind::kReal
                            : type.starts_with("TEXT") ? Kind::kText
                                                       : Kind::kNumber);
        }
        numbers.resize(kinds.size());
        reals.resize(kinds.size());
        texts.resize(kinds.size());
    }
    void read(sqlite3_stmt* statement) {
        for (std::size_t i = 0; i < kinds.size(); ++i) {
            const int column = static_cast<int>(i);
            switch (kinds[i]) {
            case Kind::kNumber: numbers[i] = sqlite3_column_int64(statement, column); break;
            case Kind::kReal: reals[i] = sqlite3_column_double(statement, column); break;
            case Kind::kText:
                if (const unsigned char* text = sqlite3_column_text(statement, column))
                    texts[i].assign(reinterpret_cast<const char*>(text),
                                    static_cast<std::size_t>(sqlite3_column_bytes(statement, column)));
                break;
            }
        }
    }
};

// A project with its pipes, made once.
class Project {
public:
    static Project& instance() {
        static Project project;
        return project;
    }
    const std::string& path() const { return m_path; }
    plumb::CDBConnection& connection() { return m_connection; }

private:
    Project() : m_folder("/tmp/veldrin-bench-" + std::to_string(getpid())) {
        if (const char* folder = std::getenv("VELDRIN_BENCH_FOLDER"))
            m_folder = std::string(folder) + "/veldrin-bench-" + std::to_string(getpid());
        m_path = veldrin::makeProject(m_folder, "Bench");
        Bare file(m_path);
        file.run("begin");
        file.run(
            ("with recursive n(i) as (select 1 union all select i + 1 from n where i < " +
             std::to_string(kPipes) +
             ") insert into tblPipe(ixPipe, ixLayerSystem, ixPipeType, dSize, dX1, dY1, dX2, dY2, sDrawing, "
             "sOffsetZ, sOffsetY, iAlignmentPointNumber, ixPipeSize, ixPipeSizingTable) select i, 1 + i % 3, "
             "1 + i % 7, 0.785, i % 1000, i / 1000, i % 1000 + 24.5, i / 1000, 'floor-' || (i % 20) || "
             "'.vqd', "
             "'C', 'C', i % 5, 1 + i % 11, 1 from n")
                .c_str());
        file.run(("with recursive n(i) as (select 1 union all select i + 1 from n where i < " +
                  std::to_string(kSums) +
                  ") insert into tblPipeSum(ixPipe, ixPipeSumCategory, bFixed, dValue) select i, 1 + i % 13, "
                  "0, i * 0.5 "
                  "from n")
                     .c_str());
        file.run("commit");
        require(m_connection.Open(m_path, false, false) == m_path, "cannot open the project");
    }
    ~Project() {
        m_connection.Close();
        std::error_code none;
        fs::remove_all(m_folder, none);
    }

    std::string m_folder;
    std::string m_path;
    plumb::CDBConnection m_connection;
};

// Keys in an order that is not the table's.
int scattered(std::int64_t n) {
    return 1 + static_cast<int>((n * 7919) % kPipes);
}

void seekByKeyBare(benchmark::State& state) {
    Bare file(Project::instance().path());
    file.run("begin");
    sqlite3_stmt* seek = file.prepare("select * from tblPipe where ixPipe = ?");
    BareRecord record(seek);
    std::int64_t n = 0;
    for (auto _ : state) {
        sqlite3_bind_int64(seek, 1, scattered(++n));
        require(sqlite3_step(seek) == SQLITE_ROW, "no such pipe");
        record.read(seek);
        sqlite3_reset(seek);
        benchmark::DoNotOptimize(record.reals.data());
    }
    sqlite3_finalize(seek);
}

void seekByKey(benchmark::State& state) {
    plumb::CDBConnection& connection = Project::instance().connection();
    connection.Execute("begin");
    plumb::tblPipe pipe(&connection);
    std::int64_t n = 0;
    for (auto _ : state) {
        require(pipe.Seek(scattered(++n)), "no such pipe");
        benchmark::DoNotOptimize(pipe.dX1.get());
    }
    connection.Execute("commit");
}

void seekByTwoKeysBare(benchmark::State& state) {
    Bare file(Project::instance().path());
    file.run("begin");
    sqlite3_stmt* seek = file.prepare("select * from tblPipeSum where ixPipe = ? and ixPipeSumCategory = ?");
    BareRecord record(seek);
    std::int64_t n = 0;
    for (auto _ : state) {
        const int pipe = 1 + static_cast<int>((++n * 7919) % kSums);
        sqlite3_bind_int64(seek, 1, pipe);
        sqlite3_bind_int64(seek, 2, 1 + pipe % 13);
        require(sqlite3_step(seek) == SQLITE_ROW, "no such value");
        record.read(seek);
        sqlite3_reset(seek);
        benchmark::DoNotOptimize(record.reals.data());
    }
    sqlite3_finalize(seek);
}

void seekByTwoKeys(benchmark::State& state) {
    plumb::CDBConnection& connection = Project::instance().connection();
    connection.Execute("begin");
    connection.OpenTable("tblPipeSum", "ixPipePipeSumCategoryFixed");
    std::int64_t n = 0;
    std::span<const COleVariant> values;
    for (auto _ : state) {
        const int pipe = 1 + static_cast<int>((++n * 7919) % kSums);
        require(connection.Seek2(pipe, 1 + pipe % 13), "no such value");
        require(connection.ReadCurrent(values), "no record");
        benchmark::DoNotOptimize(values.data());
    }
    connection.Execute("commit");
}

void walkBare(benchmark::State& state) {
    Bare file(Project::instance().path());
    sqlite3_stmt* walk =
        file.prepare("select * from tblPipe indexed by [tblPipe.ixPipeType] order by ixPipeType, ixPipe");
    BareRecord record(walk);
    for (auto _ : state) {
        int rows = 0;
        for (; sqlite3_step(walk) == SQLITE_ROW; ++rows) record.read(walk);
        sqlite3_reset(walk);
        require(rows == kPipes, "pipes are missing");
    }
    state.SetItemsProcessed(state.iterations() * kPipes);
    sqlite3_finalize(walk);
}

void walk(benchmark::State& state) {
    plumb::CDBConnection& connection = Project::instance().connection();
    plumb::tblPipe pipe(&connection);
    for (auto _ : state) {
        int rows = 0;
        pipe.SetCurrentIndex("ixPipeType");
        for (pipe.MoveFirst(); !pipe.IsEOF(); pipe.MoveNext()) ++rows;
        require(rows == kPipes, "pipes are missing");
    }
    state.SetItemsProcessed(state.iterations() * kPipes);
}

const std::string kSelection =
    "select ixPipe, sDrawing from tblPipe where bDeleted = 0 and ixPipe <= " + std::to_string(kSelected);

void selectBare(benchmark::State& state) {
    Bare file(Project::instance().path());
    sqlite3_stmt* select = file.prepare(kSelection.c_str());
    for (auto _ : state) {
        std::vector<std::pair<std::int64_t, std::string>> rows;
        while (sqlite3_step(select) == SQLITE_ROW)
            rows.emplace_back(sqlite3_column_int64(select, 0),
                              reinterpret_cast<const char*>(sqlite3_column_text(select, 1)));
        sqlite3_reset(select);
        require(rows.size() == kSelected, "rows are missing");
        benchmark::DoNotOptimize(rows.data());
    }
    sqlite3_finalize(select);
}

void select(benchmark::State& state) {
    plumb::CDBConnection& connection = Project::instance().connection();
    for (auto _ : state) {
        RowArray rows;
        require(connection.Select(kSelection, rows) && rows.rows() == kSelected, "rows are missing");
        benchmark::DoNotOptimize(rows.at(0, 0));
    }
}

void editBare(benchmark::State& state) {
    Bare file(Project::instance().path());
    sqlite3_stmt* edit = file.prepare("update tblPipe set dSize = ? where ixPipe = ?");
    std::int64_t n = 0;
    for (auto _ : state) {
        file.run("begin immediate");
        sqlite3_bind_double(edit, 1, static_cast<double>(n));
        sqlite3_bind_int64(edit, 2, scattered(++n));
        require(sqlite3_step(edit) == SQLITE_DONE, "not written");
        sqlite3_reset(edit);
        file.run("commit");
    }
    sqlite3_finalize(edit);
}

void edit(benchmark::State& state) {
    plumb::CDBConnection& connection = Project::instance().connection();
    plumb::tblPipe pipe(&connection);
    std::int64_t n = 0;
    for (auto _ : state) {
        require(pipe.Seek(scattered(++n)), "no such pipe");
        pipe.Edit();
        pipe.dSize = static_cast<double>(n);
        pipe.Update();
    }
    require(!connection.HasError(), "not written");
}

void addBare(benchmark::State& state) {
    Bare file(Project::instance().path());
    sqlite3_stmt* add = file.prepare("insert into tblPipe(ixPipeType, dX1, dY1) values (?, ?, ?)");
    for (auto _ : state) {
        file.run("begin immediate");
        sqlite3_bind_int64(add, 1, 1);
        sqlite3_bind_double(add, 2, 10.0);
        sqlite3_bind_double(add, 3, 20.0);
        require(sqlite3_step(add) == SQLITE_DONE, "not written");
        sqlite3_reset(add);
        file.run("commit");
    }
    sqlite3_finalize(add);
}

void add(benchmark::State& state) {
    plumb::CDBConnection& connection = Project::instance().connection();
    plumb::tblPipe pipe(&connection);
    for (auto _ : state) {
        pipe.AddNew();
        pipe.ixPipeType = 1;
        pipe.dX1 = 10.0;
        pipe.dY1 = 20.0;
        pipe.Update();
        benchmark::DoNotOptimize(pipe.ixPipe.get());
    }
    require(!connection.HasError(), "not written");
}

} // namespace

BENCHMARK(seekByKeyBare)->Unit(benchmark::kMicrosecond);
BENCHMARK(seekByKey)->Unit(benchmark::kMicrosecond);
BENCHMARK(seekByTwoKeysBare)->Unit(benchmark::kMicrosecond);
BENCHMARK(seekByTwoKeys)->Unit(benchmark::kMicrosecond);
BENCHMARK(walkBare)->Unit(benchmark::kMillisecond);
BENCHMARK(walk)->Unit(benchmark::kMillisecond);
BENCHMARK(selectBare)->Unit(benchmark::kMillisecond);
BENCHMARK(select)->Unit(benchmark::kMillisecond);
BENCHMARK(editBare)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(edit)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(addBare)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(add)->Unit(benchmark::kMicrosecond)->UseRealTime();
