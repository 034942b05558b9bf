// Regeneration of pipes that show all they can: labels in the line, ticks, ten breaks, elbows, an arc and a
// trap; and of traps that are broken, whose curve goes out in chords.
//
// The floor is a bare loop that stores the end points of as many pieces, computed with one sine and cosine a
// pipe. "allocations" is what the sink that draws nowhere costs for each primitive.

#include "BenchSession.h"
#include "graphics/NullSink.h"
#include "graphics/Recorder.h"
#include "pipe/PlumbPipe.h"

#include <benchmark/benchmark.h>

#include <atomic>
#include <cstdlib>
#include <memory>
#include <new>
#include <vector>

namespace {
std::atomic<std::uint64_t> allocations{0};
}

[[gnu::noinline]] void* operator new(std::size_t size) {
    allocations.fetch_add(1, std::memory_order_relaxed);
    if (void* memory = std::malloc(size)) return memory;
    throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void* memory) noexcept {
    std::free(memory);
}
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace {

constexpr int kPipes = 5'000;
constexpr double kLength = 400.0;

enum class Kind { Plain, Everything, WholeTrap, BrokenTrap };

std::unique_ptr<plumb::PlumbPipe> makePipe(int i, Kind kind) {
    auto pipe = std::make_unique<plumb::PlumbPipe>();
    pipe->setStart(benchStart(i), true);
    pipe->setEnd(benchEnd(i, kLength), true);
    plumb::PipeData& d = pipe->edit();
    d.dBreakWidth = 4.0;
    d.dPtrapWidth = 24.0;
    d.bPtrap = kind != Kind::Plain;
    if (kind == Kind::BrokenTrap) d.ptrapPolylineBreaks = {8.0, 20.0};
    if (kind != Kind::Everything) return pipe;
    d.sText = "1-1/2\" CW";
    d.dTextDistance = 60.0;
    pipe->labelText().setTextHeight(4.0);
    d.dTickWidth = 6.0;
    d.dTickOffsetHead = d.dTickOffsetTail = 3.0;
    for (int n = 1; n <= 10; ++n) pipe->addPipeBreak(35.0 * n);
    d.dArcRadius = 6.0;
    pipe->addElbow({8.0, 0.7853981625});
    pipe->addElbow({8.0, -0.7853981625});
    pipe->addArc({1.570796325, 6.0, 1});
    return pipe;
}

std::vector<std::unique_ptr<plumb::PlumbPipe>> makePipes(Kind kind) {
    std::vector<std::unique_ptr<plumb::PlumbPipe>> pipes;
    for (int i = 0; i < kPipes; ++i) pipes.push_back(makePipe(i, kind));
    return pipes;
}

std::uint64_t primitivesOf(Kind kind) {
    veldrin::NullSink sink;
    veldrin::drawEntity(*makePipe(0, kind), sink);
    return sink.primitives();
}

void report(benchmark::State& state, std::uint64_t primitivesPerRound) {
    const auto total = static_cast<double>(state.iterations()) * static_cast<double>(primitivesPerRound);
    state.SetItemsProcessed(static_cast<std::int64_t>(total));
    state.counters["time_per_primitive"] =
        benchmark::Counter(total, benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

void bareLoop(benchmark::State& state, Kind kind) {
    const BenchSession session;
    const std::uint64_t pieces = primitivesOf(kind);
    const auto pipes = makePipes(kind);
    std::vector<AcGePoint3d> ends(2 * pieces * kPipes);
    for (auto _ : state) {
        AcGePoint3d* at = ends.data();
        for (const auto& pipe : pipes) {
            const AcGePoint3d &start = pipe->start(), &end = pipe->end();
            const double angle = std::atan2(end.y - start.y, end.x - start.x);
            const double c = std::cos(angle);
            const double s = std::sin(angle);
            const double step = kLength / static_cast<double>(pieces);
            for (std::uint64_t n = 0; n < pieces; ++n) {
                const double from = step * static_cast<double>(n);
                *at++ = {start.x + c * from, start.y + s * from, start.z};
                *at++ = {start.x + c * (from + step), start.y + s * (from + step), start.z};
            }
        }
        benchmark::DoNotOptimize(ends.data());
        benchmark::ClobberMemory();
    }
    report(state, pieces * kPipes);
}

void intoNullSink(benchmark::State& state, Kind kind) {
    const BenchSession session;
    const auto pipes = makePipes(kind);
    for (const auto& pipe : pipes) { // what is made at the first draw alone
        veldrin::NullSink sink;
        veldrin::drawEntity(*pipe, sink);
    }
    std::uint64_t primitives = 0;
    const std::uint64_t before = allocations;
    for (auto _ : state) {
        veldrin::NullSink sink;
        for (const auto& pipe : pipes) veldrin::drawEntity(*pipe, sink);
        primitives = sink.primitives();
    }
    const auto total = static_cast<double>(state.iterations()) * static_cast<double>(primitives);
    state.counters["allocations"] = static_cast<double>(allocations - before) / total;
    report(state, primitives);
}

void intoRecorder(benchmark::State& state, Kind kind) {
    const BenchSession session;
    const auto pipes = makePipes(kind);
    veldrin::DisplayList list;
    veldrin::Recorder recorder(list);
    for (auto _ : state) {
        recorder.restart();
        for (const auto& pipe : pipes) veldrin::drawEntity(*pipe, recorder);
    }
    report(state, list.size());
}

#define PIPE_KIND(kind)                                                                                      \
    BENCHMARK_CAPTURE(bareLoop, kind, Kind::kind)->Unit(benchmark::kMillisecond);                            \
    BENCHMARK_CAPTURE(intoNullSink, kind, Kind::kind)->Unit(benchmark::kMillisecond);                        \
    BENCHMARK_CAPTURE(intoRecorder, kind, Kind::kind)->Unit(benchmark::kMillisecond)

PIPE_KIND(Plain);
PIPE_KIND(Everything);
PIPE_KIND(WholeTrap);
PIPE_KIND(BrokenTrap);

} // namespace
