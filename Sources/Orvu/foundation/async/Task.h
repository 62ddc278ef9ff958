#pragma once

#include <cassert>
#include <coroutine>
#include <exception>
#include <optional>
#include <type_traits>
#include <utility>

namespace orvu {

template <class T>
class Task;

/// What the tasks of one piece of work in a `TaskScope` share: the one that was started, and all
/// that are awaited below it. It outlives them.
struct TaskControl {
    /// What an awaited thing goes on with, in place of the task: it resumes `waiting` as long as
    /// the work hasn't ended.
    std::coroutine_handle<> trampoline;
    std::coroutine_handle<> waiting;
    bool hasEnded = false;
};

/// A task's wait for anything but a task. In work that has ended it isn't entered, and stays
/// suspended for good.
template <class Awaitable>
class TaskWait {
public:
    TaskWait(Awaitable& awaited, TaskControl* control) : awaited_(awaited), control_(control) {}

    [[nodiscard]] bool await_ready() const {
        return !(control_ && control_->hasEnded) && awaited_.await_ready();
    }
    bool await_suspend(std::coroutine_handle<> waiter) {
        if (!control_) return suspend(waiter);
        if (control_->hasEnded) return true;
        TaskControl& control = *control_;
        control.waiting = waiter;
        // What is awaited may have gone on already, so that this wait is over and gone. The
        // control is there in any case.
        return suspend(control.trampoline) || control.hasEnded;
    }
    decltype(auto) await_resume() { return awaited_.await_resume(); }

private:
    bool suspend(std::coroutine_handle<> waiter) {
        if constexpr (std::is_void_v<decltype(awaited_.await_suspend(waiter))>) {
            awaited_.await_suspend(waiter);
            return true;
        } else {
            return awaited_.await_suspend(waiter);
        }
    }

    Awaitable& awaited_;
    TaskControl* control_;
};

/// A task's wait for another one, which becomes part of the same work.
template <class T>
class TaskWait<Task<T>> {
public:
    TaskWait(Task<T>& awaited, TaskControl* control) : awaited_(awaited), control_(control) {}

    [[nodiscard]] bool await_ready() const {
        return !(control_ && control_->hasEnded) && awaited_.await_ready();
    }
    std::coroutine_handle<> await_suspend(std::coroutine_handle<> waiter) {
        if (!control_) return awaited_.await_suspend(waiter);
        if (control_->hasEnded) return std::noop_coroutine();
        awaited_.handle_.promise().control = control_;
        return awaited_.await_suspend(waiter);
    }
    decltype(auto) await_resume() { return awaited_.await_resume(); }

private:
    Task<T>& awaited_;
    TaskControl* control_;
};

/// What the promise types of all tasks share: it goes on with the awaiter at the end.
class TaskPromiseBase {
public:
    struct FinalAwaiter {
        [[nodiscard]] bool await_ready() const noexcept { return false; }
        template <class P>
        std::coroutine_handle<> await_suspend(std::coroutine_handle<P> ended) noexcept {
            const TaskPromiseBase& promise = ended.promise();
            const bool stops = promise.control && promise.control->hasEnded;
            return promise.continuation && !stops ? promise.continuation : std::noop_coroutine();
        }
        void await_resume() const noexcept {}
    };

    std::suspend_always initial_suspend() noexcept { return {}; }
    FinalAwaiter final_suspend() noexcept { return {}; }
    [[noreturn]] void unhandled_exception() noexcept { std::terminate(); }
    template <class Awaitable>
    TaskWait<std::remove_reference_t<Awaitable>> await_transform(Awaitable&& awaited) noexcept {
        return {awaited, control};
    }

    std::coroutine_handle<> continuation;
    TaskControl* control = nullptr;  ///< of the scope's work that it belongs to, if any
};

template <class T>
class TaskPromise;

/// A piece of asynchronous work on the main thread that ends in a `T`. It begins when it is
/// awaited or started. Dropping a task cancels it at the point where it waits: its locals go,
/// and every awaited thing takes its callback back. So its owner keeps it as the last member.
/// A task that was started by hand must not be dropped from within its own run; a `TaskScope`
/// ends its work from anywhere.
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
    friend class TaskScope;
    friend class TaskWait<Task>;

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
