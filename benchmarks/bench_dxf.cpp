// Exchange files of 120,000 entities: lines, circles and texts as an architect's plan has them.
//
// Out: the floor is a bare loop that formats the same values with std::to_chars and writes them. In: the
// floor is a bare pass over the same file in memory that finds every line and reads every number with
// std::from_chars. The memory of a large drawing is printed in bytes an entity.

#include "drawing/AcDbBlockTable.h"
#include "drawing/AcDbCircle.h"
#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbLine.h"
#include "drawing/AcDbText.h"
#include "drawing/UndoLog.h"
#include "files/DxfExport.h"
#include "files/DxfImport.h"
#include "require.h"
#include "runtime/Host.h"

#include <benchmark/benchmark.h>

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include <fcntl.h>
#include <malloc.h>
#include <sys/mman.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

constexpr int kEntities = 120'000;
constexpr int kLines = 1'000'000;

template<class Entity>
void append(AcDbBlockTableRecord& space, std::unique_ptr<Entity> entity) {
    AcDbObjectId id;
    require(space.appendAcDbEntity(id, entity.get()) == Acad::eOk, "an entity is refused");
    entity.release()->close();
}

AcGePoint3d placeOf(int i) {
    return {(i % 400) * 1.37, (i / 400) * 0.93, 0.0};
}

void fillPlan(AcDbDatabase& drawing) {
    drawing.undoLog().setRecording(false);
    const AcDbObjectPointer<AcDbBlockTableRecord> space(drawing.modelSpaceId(), AcDb::kForWrite);
    for (int i = 0; i < kEntities; ++i) {
        const AcGePoint3d at = placeOf(i);
        if (i % 8 == 0)
            append(*space, std::make_unique<AcDbCircle>(at, AcGeVector3d::kZAxis, 0.37));
        else if (i % 8 == 1)
            append(*space, std::make_unique<AcDbText>(at, "R-" + std::to_string(i), 0.25));
        else
            append(*space, std::make_unique<AcDbLine>(at, at + AcGeVector3d(1.21, 0.77 * (i % 3), 0.0)));
    }
}

class Plan {
public:
    static Plan& instance() {
        static Plan plan;
        return plan;
    }
    AcDbDatabase& drawing() { return m_drawing; }
    std::string file(const char* name) const { return (m_folder / name).string(); }

private:
    Plan() {
        std::string name = (fs::temp_directory_path() / "veldrin-bench-XXXXXX").string();
        m_folder = mkdtemp(name.data());
        fillPlan(m_drawing);
        std::vector<std::string> losses;
        require(!veldrin::exportDxf(m_drawing, file("plan.dxf"), {}, losses), "the plan cannot be exported");
    }
    ~Plan() { fs::remove_all(m_folder); }

    veldrin::Host m_host;
    fs::path m_folder;
    AcDbDatabase m_drawing;
};

// A file's values as a program has them before it writes: numbers as numbers, the rest as text.
struct Value {
    int code;
    bool isReal;
    double real;
    std::string text;
};

std::vector<Value> valuesOf(const std::string& path) {
    std::ifstream in(path);
    std::vector<Value> values;
    std::string code, text;
    while (std::getline(in, code) && std::getline(in, text)) {
        const int number = std::atoi(code.c_str());
        const bool isReal =
            (number >= 10 && number < 60) || (number >= 140 && number < 150) || number / 10 == 21;
        values.push_back({number, isReal, isReal ? std::strtod(text.c_str(), nullptr) : 0.0, text});
    }
    return values;
}

void writeBare(benchmark::State& state) {
    const std::vector<Value> values = valuesOf(Plan::instance().file("plan.dxf"));
    const std::string path = Plan::instance().file("bare.dxf");
    for (auto _ : state) {
        const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
        std::vector<char> buffer(1 << 18);
        char* at = buffer.data();
        const auto flush = [&] {
            require(write(file, buffer.data(), static_cast<std::size_t>(at - buffer.data())) >= 0, "no room");
            at = buffer.data();
        };
        for (const Value& value : values) {
            if (buffer.data() + buffer.size() - at < 400) flush();
            at = std::to_chars(at, at + 8, value.code).ptr;
            *at++ = '\n';
            if (value.isReal)
                at = std::to_chars(at, at + 32, value.real).ptr;
            else
                at = static_cast<char*>(std::memcpy(at, value.text.data(), value.text.size())) +
                     value.text.size();
            *at++ = '\n';
        }
        flush();
        fsync(file);
        close(file);
    }
    state.SetItemsProcessed(state.iterations() * kEntities);
}

void writeDrawing(benchmark::State& state) {
    Plan& plan = Plan::instance();
    for (auto _ : state) {
        std::vector<std::string> losses;
        require(!veldrin::exportDxf(plan.drawing(), plan.file("out.dxf"), {}, losses),
                "the plan cannot be exported");
    }
    state.SetItemsProcessed(state.iterations() * kEntities);
}

void readBare(benchmark::State& state) {
    const std::string path = Plan::instance().file("plan.dxf");
    for (auto _ : state) {
        const int file = open(path.c_str(), O_RDONLY);
        const auto size = static_cast<std::size_t>(fs::file_size(path));
        const char* at = static_cast<const char*>(mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file, 0));
        const char* const begin = at;
        const char* const end = at + size;
        double sum = 0.0;
        while (at < end) {
            while (*at == ' ') ++at;
            int code = 0;
            at = std::from_chars(at, end, code).ptr + 1;
            const char* const line =
                static_cast<const char*>(std::memchr(at, '\n', static_cast<std::size_t>(end - at)));
            double value = 0.0;
            if (code >= 10 && code < 60) std::from_chars(at, line, value);
            sum += value;
            at = line + 1;
        }
        benchmark::DoNotOptimize(sum);
        munmap(const_cast<char*>(begin), size);
        close(file);
    }
    state.SetItemsProcessed(state.iterations() * kEntities);
}

void readDrawing(benchmark::State& state) {
    Plan& plan = Plan::instance();
    for (auto _ : state) {
        veldrin::DxfImportReport report;
        auto imported = veldrin::importDxf(plan.file("plan.dxf"), report);
        require(imported.index() == 0 && report.entities == kEntities, "the plan cannot be imported");
        state.PauseTiming(); // closing is not opening
        imported = std::string();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * kEntities);
}

void memoryOfLines(benchmark::State& state) {
    Plan::instance();
    for (auto _ : state) {
        const struct mallinfo2 before = mallinfo2();
        auto drawing = std::make_unique<AcDbDatabase>();
        drawing->undoLog().setRecording(false);
        {
            const AcDbObjectPointer<AcDbBlockTableRecord> space(drawing->modelSpaceId(), AcDb::kForWrite);
            for (int i = 0; i < kLines; ++i)
                append(*space, std::make_unique<AcDbLine>(placeOf(i), placeOf(i + 1)));
        }
        const struct mallinfo2 after = mallinfo2();
        state.counters["bytes_per_entity"] =
            static_cast<double>(after.uordblks + after.hblkhd - before.uordblks - before.hblkhd) / kLines;
    }
}

BENCHMARK(writeBare)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(writeDrawing)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(readBare)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(readDrawing)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(memoryOfLines)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);

} // namespace
