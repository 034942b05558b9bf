// Any bytes as a Lisp program: it may fail, but not crash, hang, or leave anything behind. Small limits and a
// clock end each one soon; what reaches files is taken away from it first.
#include "lisp/Engine.h"
#include "lisp/Heap.h"

#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <mutex>
#include <thread>

using namespace veldrin::lisp;

namespace {

class ClosedHost : public Services {
public:
    void print(std::string_view) override {}
    std::optional<std::string> readLine() override { return std::nullopt; }
    std::string findFile(std::string_view) override { return {}; }
    std::optional<std::string> environment(std::string_view) override { return std::nullopt; }
    void setEnvironment(std::string_view, std::string_view) override {}
};

// Ends the run that is going on when it takes too long.
class Clock {
public:
    explicit Clock(Engine& engine)
        : thread_([this, &engine] {
            std::unique_lock lock(mutex_);
            if (!changed_.wait_for(lock, longest, [this] { return isDone_; })) engine.requestEnd();
        }) {}
    ~Clock() {
        {
            const std::lock_guard lock(mutex_);
            isDone_ = true;
        }
        changed_.notify_one();
        thread_.join();
    }

private:
    static constexpr std::chrono::milliseconds longest{200};
    std::mutex mutex_;
    std::condition_variable changed_;
    bool isDone_ = false;
    std::thread thread_;
};

void takeFilesAway(Engine& engine) {
    for (const char* prefix : {"OPEN", "LOAD", "VL-FILE", "VL-MKDIR", "VL-DIRECTORY"})
        for (const Symbol* symbol : engine.symbolsWithPrefix(prefix)) engine.set(symbol->name, {});
}

void runProgram(std::string_view text) {
    ClosedHost host;
    Limits limits;
    limits.callDepth = 500;
    limits.stackBytes = std::size_t{16} << 20;
    limits.heapBytes = Heap::instance().liveBytes() + (std::size_t{16} << 20);
    Engine engine(limits);
    engine.setServices(&host);
    takeFilesAway(engine);
    const Clock clock(engine);
    engine.runText(text, "input");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::size_t before = Heap::instance().liveCells();
    runProgram({reinterpret_cast<const char*>(data), size});
    if (Heap::instance().liveCells() != before) std::abort();
    return 0;
}
