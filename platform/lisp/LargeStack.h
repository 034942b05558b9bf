// A stack of its own for deep recursion: Lisp functions call each other through the evaluator's C++ frames,
// and the stack that a thread starts with is far too small for that. The work stays on its thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>

namespace veldrin::lisp {

class LargeStack {
public:
    // Address space; memory is taken as it is used. Throws std::bad_alloc.
    explicit LargeStack(std::size_t bytes);
    ~LargeStack();
    LargeStack(const LargeStack&) = delete;
    LargeStack& operator=(const LargeStack&) = delete;

    // Runs `work` on this stack and comes back when it is done. It must not throw.
    void run(const std::function<void()>& work);

    // Below this address the reserve begins that C++ code called at the deepest point may use.
    std::uintptr_t softEnd() const;

private:
    static void start();

    char* base_;
    std::size_t size_;
};

// The same border for the stack that the calling thread came with.
std::uintptr_t threadStackSoftEnd();

} // namespace veldrin::lisp
