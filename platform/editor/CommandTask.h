#pragma once

// Clang 14 has coroutines but does not say so in the way the standard library asks for.
#if defined(__clang__) && !defined(__cpp_impl_coroutine)
#define __cpp_impl_coroutine 201902L // NOLINT
#endif

#include <coroutine>
#include <exception>
#include <optional>
#include <utility>

namespace veldrin {

// A piece of a command's work that may stop where it asks for input and goes on when there is some. Commands
// are written as such tasks, because a script may give a command its answers in several calls, with other
// work in between. A task starts when it is awaited and passes its exceptions on to who awaits it.
//
// What is handed to a task in the expression that awaits it must not need destruction (no std::string made on
// the spot): GCC 12 destroys such temporaries twice.
template<class T>
class Task;

namespace task {

struct PromiseBase {
    std::coroutine_handle<> continuation;
    std::exception_ptr error;

    struct Final {
        bool await_ready() noexcept { return false; }
        template<class Promise>
        std::coroutine_handle<> await_suspend(std::coroutine_handle<Promise> done) noexcept {
            const auto next = done.promise().continuation;
            return next ? next : std::noop_coroutine();
        }
        void await_resume() noexcept {}
    };
    std::suspend_always initial_suspend() noexcept { return {}; }
    Final final_suspend() noexcept { return {}; }
    void unhandled_exception() { error = std::current_exception(); }
};

template<class T>
struct Promise : PromiseBase {
    std::optional<T> value;
    Task<T> get_return_object();
    void return_value(T result) { value.emplace(std::move(result)); }
    T take() {
        if (error) std::rethrow_exception(error);
        return std::move(*value);
    }
};

template<>
struct Promise<void> : PromiseBase {
    Task<void> get_return_object();
    void return_void() {}
    void take() {
        if (error) std::rethrow_exception(error);
    }
};

} // namespace task

template<class T = void>
class [[nodiscard]] Task {
public:
    using promise_type = task::Promise<T>;
    using Handle = std::coroutine_handle<promise_type>;

    Task() = default;
    explicit Task(Handle handle) : m_handle(handle) {}
    Task(Task&& other) noexcept : m_handle(std::exchange(other.m_handle, nullptr)) {}
    Task& operator=(Task&& other) noexcept {
        std::swap(m_handle, other.m_handle);
        return *this;
    }
    ~Task() {
        if (m_handle) m_handle.destroy();
    }

    // For the one who runs the outermost task.
    Handle handle() const { return m_handle; }
    bool isDone() const { return !m_handle || m_handle.done(); }
    T result() { return m_handle.promise().take(); }

    // For a task that awaits this one.
    bool await_ready() const noexcept { return false; }
    std::coroutine_handle<> await_suspend(std::coroutine_handle<> awaiting) noexcept {
        m_handle.promise().continuation = awaiting;
        return m_handle;
    }
    T await_resume() { return m_handle.promise().take(); }

private:
    Handle m_handle;
};

namespace task {
template<class T>
Task<T> Promise<T>::get_return_object() {
    return Task<T>(std::coroutine_handle<Promise<T>>::from_promise(*this));
}
inline Task<void> Promise<void>::get_return_object() {
    return Task<void>(std::coroutine_handle<Promise<void>>::from_promise(*this));
}
} // namespace task

} // namespace veldrin
