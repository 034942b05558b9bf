#include "lisp/LargeStack.h"

#include <algorithm>
#include <new>
#include <pthread.h>
#include <sys/mman.h>
#include <ucontext.h>
#include <unistd.h>

#if defined(__SANITIZE_ADDRESS__)
#define VELDRIN_ANNOTATE_STACKS 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define VELDRIN_ANNOTATE_STACKS 1
#endif
#endif
#ifdef VELDRIN_ANNOTATE_STACKS
#include <sanitizer/common_interface_defs.h>
#endif

namespace veldrin::lisp {

namespace {

constexpr std::size_t reserve = std::size_t{2} << 20;
constexpr std::size_t least = 4 * reserve;
#ifdef VELDRIN_ANNOTATE_STACKS
constexpr std::size_t most = std::size_t{64} << 20; // the sanitizer cleans up behind exceptions no farther
#else
constexpr std::size_t most = std::size_t{1} << 40;
#endif

struct Switch {
    const std::function<void()>* work = nullptr;
    ucontext_t caller{}, callee{};
    void* callerFakeStack = nullptr;
    const void* callerBottom = nullptr;
    std::size_t callerSize = 0;
};

// makecontext passes integers only; the switch that is starting is handed over here.
thread_local Switch* starting = nullptr;

} // namespace

LargeStack::LargeStack(std::size_t bytes) : size_(std::clamp(bytes, least, most)) {
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    size_ = (size_ + page - 1) / page * page;
    void* memory = mmap(nullptr, size_, PROT_READ | PROT_WRITE,
                        MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE | MAP_STACK, -1, 0);
    if (memory == MAP_FAILED) throw std::bad_alloc();
    base_ = static_cast<char*>(memory);
    mprotect(base_, page, PROT_NONE);
}

LargeStack::~LargeStack() {
    munmap(base_, size_);
}

std::uintptr_t LargeStack::softEnd() const {
    return reinterpret_cast<std::uintptr_t>(base_) + reserve;
}

void LargeStack::start() {
    Switch& s = *starting;
#ifdef VELDRIN_ANNOTATE_STACKS
    __sanitizer_finish_switch_fiber(nullptr, &s.callerBottom, &s.callerSize);
#endif
    (*s.work)();
#ifdef VELDRIN_ANNOTATE_STACKS
    __sanitizer_start_switch_fiber(nullptr, s.callerBottom, s.callerSize);
#endif
    setcontext(&s.caller);
}

void LargeStack::run(const std::function<void()>& work) {
    Switch s;
    s.work = &work;
    getcontext(&s.callee);
    s.callee.uc_stack.ss_sp = base_;
    s.callee.uc_stack.ss_size = size_;
    s.callee.uc_link = nullptr;
    makecontext(&s.callee, &LargeStack::start, 0);
    starting = &s;
#ifdef VELDRIN_ANNOTATE_STACKS
    __sanitizer_start_switch_fiber(&s.callerFakeStack, base_, size_);
#endif
    swapcontext(&s.caller, &s.callee);
#ifdef VELDRIN_ANNOTATE_STACKS
    __sanitizer_finish_switch_fiber(s.callerFakeStack, nullptr, nullptr);
#endif
}

std::uintptr_t threadStackSoftEnd() {
    pthread_attr_t attributes;
    if (pthread_getattr_np(pthread_self(), &attributes) != 0) return 0;
    void* base = nullptr;
    std::size_t size = 0;
    pthread_attr_getstack(&attributes, &base, &size);
    pthread_attr_destroy(&attributes);
    return reinterpret_cast<std::uintptr_t>(base) + std::min(reserve, size / 4);
}

} // namespace veldrin::lisp
