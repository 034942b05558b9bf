// What a user waits for with pipes: regeneration of a large plan, and setting pipes from Lisp.
//
// The floor of regeneration is a bare loop that computes and stores the same end points, with one angle, sine
// and cosine a pipe. Times are per emitted primitive; "items_per_second" counts primitives, or calls.

#include "BenchSession.h"
#include "drawing/AcDbDatabase.h"
#include "graphics/NullSink.h"
#include "graphics/Recorder.h"
#include "lisp/Engine.h"
#include "pipe/PlumbPipe.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <memory>
#include <vector>

namespace {

constexpr int kPipes = 100'000;
constexpr int kFittings = 4;
constexpr int kPrimitives = 1 + kFittings; // the run, and its fittings

constexpr double kLength = 30.0;

double elbowAngle(int fitting) {
    return 0.7853981625 * (fitting - 1.5);
}

enum class Fittings { kElbows, kArcs };

std::vector<std::unique_ptr<plumb::PlumbPipe>> makePipes(Fittings fittings) {
    std::vector<std::unique_ptr<plumb::PlumbPipe>> pipes;
    for (int i = 0; i < kPipes; ++i) {
        auto pipe = std::make_unique<plumb::PlumbPipe>();
        pipe->setStart(benchStart(i), true);
        pipe->setEnd(benchEnd(i, kLength), true);
        pipe->edit().dArcRadius = 4.0;
        for (int f = 0; f < kFittings; ++f) {
            if (fittings == Fittings::kElbows)
                pipe->addElbow({4.0, elbowAngle(f)});
            else
                pipe->addArc({1.570796325, 2.0 * f, f % 2 == 0 ? 1 : -1});
        }
        pipes.push_back(std::move(pipe));
    }
    return pipes;
}

void count(benchmark::State& state) {
    const auto total = state.iterations() * kPipes * kPrimitives;
    state.SetItemsProcessed(total);
    state.counters["time_per_primitive"] = benchmark::Counter(
        static_cast<double>(total), benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

// What a pipe's picture is computed from, side by side in memory.
struct Bare {
    AcGePoint3d start;
    AcGePoint3d end;
    struct {
        double length, cosine, sine;
    } stubs[kFittings];
};

void bareLoop(benchmark::State& state) {
    std::vector<Bare> pipes(kPipes);
    for (int i = 0; i < kPipes; ++i) {
        Bare& pipe = pipes[static_cast<std::size_t>(i)];
        pipe.start = benchStart(i);
        pipe.end = benchEnd(i, kLength);
        for (int f = 0; f < kFittings; ++f)
            pipe.stubs[f] = {4.0, std::cos(elbowAngle(f)), std::sin(elbowAngle(f))};
    }
    std::vector<AcGePoint3d> ends(static_cast<std::size_t>(kPipes) * kPrimitives * 2);
    for (auto _ : state) {
        AcGePoint3d* at = ends.data();
        for (const Bare& pipe : pipes) {
            const double angle = std::atan2(pipe.end.y - pipe.start.y, pipe.end.x - pipe.start.x);
            const double c = std::cos(angle);
            const double s = std::sin(angle);
            *at++ = pipe.start;
            *at++ = pipe.end;
            for (const auto& stub : pipe.stubs) {
                *at++ = pipe.end;
                *at++ = {pipe.end.x + (c * stub.cosine - s * stub.sine) * stub.length,
                         pipe.end.y + (s * stub.cosine + c * stub.sine) * stub.length, pipe.end.z};
            }
        }
        benchmark::DoNotOptimize(ends.data());
        benchmark::ClobberMemory();
    }
    count(state);
}

void intoNullSink(benchmark::State& state, Fittings fittings) {
    const BenchSession session;
    const auto pipes = makePipes(fittings);
    for (auto _ : state) {
        veldrin::NullSink sink;
        for (const auto& pipe : pipes) veldrin::drawEntity(*pipe, sink);
        if (sink.primitives() != static_cast<std::uint64_t>(kPipes) * kPrimitives)
            state.SkipWithError("count");
    }
    count(state);
}

void intoRecorder(benchmark::State& state, Fittings fittings) {
    const BenchSession session;
    const auto pipes = makePipes(fittings);
    veldrin::DisplayList list;
    veldrin::Recorder recorder(list);
    for (auto _ : state) {
        recorder.restart();
        for (const auto& pipe : pipes) veldrin::drawEntity(*pipe, recorder);
        benchmark::DoNotOptimize(list.size());
    }
    count(state);
}

void setPipeInfo(benchmark::State& state) {
    BenchSession session;
    veldrin::lisp::Engine& lisp = session.host.lisp();
    lisp.runText("(setq pipe (vq_plumb-insertPipe 1 '(0 0 0) '(100 0 0)))");
    constexpr int kCalls = 10'000;
    for (auto _ : state) {
        const auto outcome =
            lisp.runText("(repeat 10000 (vq_plumb-setPipeInfo pipe '(\"P2\" (120.0 5.0 0.0)) "
                         "'(\"HEADOFFSET\" 6.0) '(\"ELBOWLIST\" 8.0 0.78 8.0 -0.78)))");
        if (!outcome) state.SkipWithError("the call failed");
    }
    state.SetItemsProcessed(state.iterations() * kCalls);
}

BENCHMARK(bareLoop)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(intoNullSink, elbows, Fittings::kElbows)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(intoNullSink, arcs, Fittings::kArcs)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(intoRecorder, elbows, Fittings::kElbows)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(intoRecorder, arcs, Fittings::kArcs)->Unit(benchmark::kMillisecond);
BENCHMARK(setPipeInfo)->Unit(benchmark::kMillisecond);

} // namespace
