#pragma once

#include <cassert>
#include <coroutine>
#include <exception>
#include <optional>
#include <type_traits>
#include <utility>

namespace orvu {

/// What the promise types of all tasks share: it goes on with the awaiter at the end.
class TaskPromiseBase {
public:
    struct FinalAwaiter {
        [[nodiscard]] bool await_ready() const noexcept { return false; }
        template <class P>
        std::coroutine_handle<> await_suspend(std::coroutine_handle<P> ended) noexcept {
            const auto next = ended.promise().continuation;
            return next ? next : std::noop_coroutine();
        }
        void await_resume() const noexcept {}
    };

    std::suspend_always initial_suspend() noexcept { return {}; }
    FinalAwaiter final_suspend() noexcept { return {}; }
    [[noreturn]] void unhandled_exception() noexcept { std::terminate(); }

    std::coroutine_handle<> continuation;
};

template <class T>
class TaskPromise;

/// A piece of asynchronous work on the main thread that ends in a `T`. It begins when it is
/// awaited or started. Dropping a task cancels it at the point where it waits: its locals go,
/// and every awaited thing takes its callback back. So its owner keeps it as the last member.
/// A task must not be dropped from within its own run.
template <class T>
class [[nodiscard]] Task {
public:
    using promise_type = TaskPromise<T>;
    using Handle = std::coroutine_handle<promise_type>;

    Task() = default;
    explicit Task(Handle handle) : handle_(handle) {}
    Task(Task&& other) noexcept : handle_(std::exchange(other.handle_, {})) {}
    Task& operator=(Task&& other) noexcept {
        if (this == &other) return *this;
        cancel();
        handle_ = std::exchange(other.handle_, {});
        return *this;
    }
    ~Task() { cancel(); }

    /// Runs up to the first wait. Once, and not on a task that is awaited.
    void start() { handle_.resume(); }
    /// Drops the work where it stands. Nothing of it runs any more.
    void cancel() {
        if (const auto handle = std::exchange(handle_, {})) handle.destroy();
    }
    /// Whether the work came to its end. False for a task that was cancelled or moved from.
    [[nodiscard]] bool isDone() const { return handle_ && handle_.done(); }
    /// The result of a task that is done.
    template <class U = T>
        requires(!std::is_void_v<U>)
    [[nodiscard]] const U& result() const {
        assert(isDone());
        return *handle_.promise().result;
    }

    [[nodiscard]] bool await_ready() const { return handle_.done(); }
    std::coroutine_handle<> await_suspend(std::coroutine_handle<> waiter) {
        handle_.promise().continuation = waiter;
        return handle_;
    }
    T await_resume() {
        if constexpr (!std::is_void_v<T>) return std::move(*handle_.promise().result);
    }

private:
    Handle handle_;
};

template <class T>
class TaskPromise : public TaskPromiseBase {
public:
    Task<T> get_return_object() {
        return Task<T>{std::coroutine_handle<TaskPromise>::from_promise(*this)};
    }
    void return_value(T value) { result.emplace(std::move(value)); }

    std::optional<T> result;
};

template <>
class TaskPromise<void> : public TaskPromiseBase {
public:
    Task<void> get_return_object() {
        return Task<void>{std::coroutine_handle<TaskPromise>::from_promise(*this)};
    }
    void return_void() {}
};

}  // namespace orvu
