// Any Lisp source is run: it ends with a value, an error or `quit`, within the limits, and leaves nothing
// behind. What would reach files or the environment is taken away from it first.

#include "lisp/Engine.h"
#include "lisp/Heap.h"

#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <thread>

using namespace veldrin::lisp;

namespace {

class Silent : public Services {
public:
    void print(std::string_view) override {}
    std::optional<std::string> readLine() override { return {}; }
    std::string findFile(std::string_view) override { return {}; }
    std::optional<std::string> environment(std::string_view) override { return {}; }
    void setEnvironment(std::string_view, std::string_view) override {}
};

constexpr const char* kReachesOutside[] = {
    "open",
    "load",
    "findfile",
    "vl-file-delete",
    "vl-file-copy",
    "vl-file-rename",
    "vl-file-size",
    "vl-mkdir",
    "vl-directory-files",
    "vl-filename-mktemp",
    "vl-file-systime",
    "vl-file-directory-p",
};

// Breaks what runs for too long.
class Watch {
public:
    explicit Watch(Engine& engine)
        : m_thread([this, &engine](const std::stop_token& stop) {
            using namespace std::chrono_literals;
            for (int ticks = 0; !stop.stop_requested(); ++ticks) {
                std::this_thread::sleep_for(2ms);
                if (ticks > 50) engine.requestBreak();
            }
        }) {}

private:
    std::jthread m_thread;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::size_t cellsAtFirst = [] {
        Engine engine; // what belongs to the process is made once
        return Heap::instance().liveCells();
    }();
    {
        Limits limits;
        limits.callDepth = 300;
        limits.stackBytes = std::size_t{64} << 20;
        limits.heapBytes = std::size_t{128} << 20;
        Silent services;
        Engine engine(limits);
        engine.setServices(&services);
        for (const char* name : kReachesOutside) engine.set(name, Value());
        const Watch watch(engine);
        const Outcome outcome = engine.runText({reinterpret_cast<const char*>(data), size});
        static_cast<void>(outcome);
    }
    if (Heap::instance().liveCells() > cellsAtFirst) {
        std::fputs("values are left behind\n", stderr);
        std::abort();
    }
    return 0;
}
