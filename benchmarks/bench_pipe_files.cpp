// What a user waits for with a large drawing: saving and opening 100,000 pipes, saving again after one
// change, taking back a change to 10,000 of them.
//
// The floor is a bare program on the same engine: it writes and reads the same rows, records and pictures, in
// one transaction with prepared statements and the same safety. That of an undo copies the same records in
// memory.

#include "BenchSession.h"
#include "drawing/AcDbBlockTable.h"
#include "drawing/AcDbDatabase.h"
#include "drawing/DatabaseRegistry.h"
#include "drawing/UndoLog.h"
#include "drawing/acdb.h"
#include "files/DrawingFile.h"
#include "files/SqlFile.h"
#include "pipe/PlumbPipe.h"
#include "require.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using veldrin::SqlFile;
using veldrin::SqlStatement;

constexpr int kPipes = 100'000;
constexpr int kUndone = 10'000;
constexpr double kLength = 30.0;

struct Row {
    std::int64_t handle;
    std::string className;
    std::int64_t owner;
    std::string record;
};

struct Picture {
    std::int64_t handle;
    std::string bytes;
};

// A drawing full of pipes, saved once, and its rows.
class Plan {
public:
    static Plan& instance() {
        static Plan plan;
        return plan;
    }

    AcDbDatabase& drawing() { return *m_session.host.databases().working(); }
    std::string file(const char* name) const { return (m_folder / name).string(); }
    const std::vector<AcDbObjectId>& pipes() const { return m_pipes; }
    const std::vector<Row>& rows() const { return m_rows; }
    const std::string& schema() const { return m_schema; }
    const std::vector<Picture>& pictures() const { return m_pictures; }

private:
    Plan() {
        std::string name = (fs::temp_directory_path() / "veldrin-bench-XXXXXX").string();
        m_folder = mkdtemp(name.data());
        drawing().undoLog().setRecording(false);
        const AcDbObjectPointer<AcDbBlockTableRecord> space(drawing().modelSpaceId(), AcDb::kForWrite);
        for (int i = 0; i < kPipes; ++i) {
            auto pipe = std::make_unique<plumb::PlumbPipe>();
            pipe->setStart(benchStart(i), true);
            pipe->setEnd(benchEnd(i, kLength), true);
            pipe->addElbow({4.0, 0.785});
            AcDbObjectId id;
            require(space->appendAcDbEntity(id, pipe.get()) == Acad::eOk, "a pipe is refused");
            pipe.release()->close();
            m_pipes.push_back(id);
        }
        drawing().undoLog().setRecording(true);
        require(!veldrin::saveDrawing(drawing(), file("plan.vqd")), "the plan cannot be saved");
        SqlFile saved(file("plan.vqd"), SqlFile::Mode::kExisting);
        SqlStatement schema(saved, "select sql from sqlite_schema where sql is not null");
        while (schema.step()) m_schema += std::string(schema.text(0)) + ";";
        SqlStatement rows(saved, "select handle, class, owner, record from objects order by handle");
        while (rows.step())
            m_rows.push_back(
                {rows.integer(0), std::string(rows.text(1)), rows.integer(2), std::string(rows.bytes(3))});
        SqlStatement pictures(saved, "select handle, picture from pictures order by handle");
        while (pictures.step()) m_pictures.push_back({pictures.integer(0), std::string(pictures.bytes(1))});
        require(saved.ok() && m_rows.size() > kPipes, "the plan cannot be read");
    }
    ~Plan() { fs::remove_all(m_folder); }

    BenchSession m_session;
    fs::path m_folder;
    std::vector<AcDbObjectId> m_pipes;
    std::string m_schema;
    std::vector<Row> m_rows;
    std::vector<Picture> m_pictures;
};

void countPipes(benchmark::State& state, int pipes) {
    state.SetItemsProcessed(state.iterations() * pipes);
}

void saveBareRows(benchmark::State& state) {
    const Plan& plan = Plan::instance();
    for (auto _ : state) {
        fs::remove(plan.file("bare.vqd"));
        SqlFile file(plan.file("bare.vqd"), SqlFile::Mode::kCreate);
        file.run("pragma page_size = 16384; pragma journal_mode = off; pragma synchronous = full; "
                 "pragma locking_mode = exclusive");
        file.run("begin immediate");
        file.run(plan.schema().c_str());
        SqlStatement row(file, "insert into objects values(?1, ?2, ?3, ?4)");
        SqlStatement picture(file, "insert into pictures values(?1, ?2)");
        for (const Row& r : plan.rows())
            row.bind(1, r.handle).bind(2, r.className).bind(3, r.owner).bindBytes(4, r.record).execute();
        for (const Picture& p : plan.pictures()) picture.bind(1, p.handle).bindBytes(2, p.bytes).execute();
        file.run("commit");
        require(file.ok(), "bare rows cannot be written");
    }
    countPipes(state, kPipes);
}

void saveWhole(benchmark::State& state) {
    Plan& plan = Plan::instance();
    for (auto _ : state)
        require(!veldrin::saveDrawingCopy(plan.drawing(), plan.file("copy.vqd")), "the copy cannot be saved");
    countPipes(state, kPipes);
}

void saveOneBareRow(benchmark::State& state) {
    const Plan& plan = Plan::instance();
    fs::copy_file(plan.file("plan.vqd"), plan.file("bare.vqd"), fs::copy_options::overwrite_existing);
    const Row& last = plan.rows().back();
    for (auto _ : state) {
        SqlFile file(plan.file("bare.vqd"), SqlFile::Mode::kExisting);
        file.run("pragma journal_mode = delete; pragma synchronous = full");
        file.run("begin immediate");
        SqlStatement row(file, "update objects set record = ?2 where handle = ?1");
        row.bind(1, last.handle).bindBytes(2, last.record).execute();
        file.run("commit");
        require(file.ok(), "a bare row cannot be written");
    }
    countPipes(state, 1);
}

// `nudge` differs each time, so that there is a change.
void changePipe(AcDbObjectId id, double nudge) {
    const AcDbObjectPointer<plumb::PlumbPipe> pipe(id, AcDb::kForWrite);
    pipe->setEnd(pipe->end() + AcGeVector3d(0.0, 0.0, nudge), true);
}

void saveAfterOneChange(benchmark::State& state) {
    Plan& plan = Plan::instance();
    require(!veldrin::saveDrawing(plan.drawing(), plan.file("plan.vqd")), "the plan cannot be saved");
    double nudge = 1.0;
    for (auto _ : state) {
        changePipe(plan.pipes().back(), nudge);
        nudge = -nudge;
        require(!veldrin::saveDrawing(plan.drawing(), plan.file("plan.vqd")), "the plan cannot be saved");
    }
    countPipes(state, 1);
}

void openBareRows(benchmark::State& state) {
    const Plan& plan = Plan::instance();
    for (auto _ : state) {
        SqlFile file(plan.file("plan.vqd"), SqlFile::Mode::kExisting);
        SqlStatement rows(file, "select handle, class, owner, record from objects order by handle");
        std::vector<Row> read;
        while (rows.step())
            read.push_back(
                {rows.integer(0), std::string(rows.text(1)), rows.integer(2), std::string(rows.bytes(3))});
        benchmark::DoNotOptimize(read.data());
        require(read.size() == plan.rows().size(), "bare rows cannot be read");
    }
    countPipes(state, kPipes);
}

void openWhole(benchmark::State& state) {
    const Plan& plan = Plan::instance();
    for (auto _ : state) {
        auto opened = veldrin::openDrawing(plan.file("plan.vqd"));
        require(opened.index() == 0, "the plan cannot be opened");
        state.PauseTiming(); // closing is not opening
        opened = std::string();
        state.ResumeTiming();
    }
    countPipes(state, kPipes);
}

void copyBareRecords(benchmark::State& state) {
    const Plan& plan = Plan::instance();
    const auto first = plan.rows().end() - kUndone;
    for (auto _ : state) {
        std::vector<Row> copies(first, plan.rows().end());
        benchmark::DoNotOptimize(copies.data());
    }
    countPipes(state, kUndone);
}

void undoChanges(benchmark::State& state) {
    Plan& plan = Plan::instance();
    veldrin::UndoLog& log = plan.drawing().undoLog();
    for (auto _ : state) {
        state.PauseTiming();
        log.begin("change");
        for (std::size_t i = 0; i < kUndone; ++i) changePipe(plan.pipes()[i], 1.0);
        log.end();
        state.ResumeTiming();
        log.undo(1);
    }
    countPipes(state, kUndone);
}

BENCHMARK(saveBareRows)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(saveWhole)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(saveOneBareRow)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(saveAfterOneChange)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(openBareRows)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(openWhole)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(copyBareRecords)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(undoChanges)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
