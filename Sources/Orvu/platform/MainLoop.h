#pragma once

#include "foundation/Date.h"

#include <chrono>
#include <coroutine>
#include <functional>
#include <utility>

namespace orvu {

/// Work that a `MainLoop` will do. Dropping it calls the work off; after the work ran, dropping
/// it has no effect.
class Scheduled {
public:
    Scheduled() = default;
    explicit Scheduled(std::function<void()> callOff) : callOff_(std::move(callOff)) {}
    Scheduled(Scheduled&& other) noexcept : callOff_(std::exchange(other.callOff_, nullptr)) {}
    Scheduled& operator=(Scheduled&& other) noexcept {
        if (this == &other) return *this;
        cancel();
        callOff_ = std::exchange(other.callOff_, nullptr);
        return *this;
    }
    ~Scheduled() { cancel(); }

    void cancel() {
        if (const auto callOff = std::exchange(callOff_, nullptr)) callOff();
    }

private:
    std::function<void()> callOff_;
};

/// The main thread's event loop: the one source of time, and of work that is done later.
class MainLoop {
public:
    virtual ~MainLoop() = default;

    [[nodiscard]] virtual Date now() const = 0;
    /// Runs `work` once, `delay` from now at the earliest.
    [[nodiscard]] virtual Scheduled after(std::chrono::milliseconds delay,
                                          std::function<void()> work) = 0;
    /// Runs `work` once when nothing more urgent waits: input and drawing come first. One piece
    /// of idle work is done at a turn of the loop.
    [[nodiscard]] virtual Scheduled whenIdle(std::function<void()> work) = 0;
};

/// `co_await Sleep{loop, 90ms}` goes on that much later, or never if the task is dropped.
class Sleep {
public:
    Sleep(MainLoop& loop, std::chrono::milliseconds delay) : loop_(loop), delay_(delay) {}

    [[nodiscard]] bool await_ready() const { return false; }
    void await_suspend(std::coroutine_handle<> waiter) {
        timer_ = loop_.after(delay_, [waiter] { waiter.resume(); });
    }
    void await_resume() const {}

private:
    MainLoop& loop_;
    std::chrono::milliseconds delay_;
    Scheduled timer_;
};

}  // namespace orvu
