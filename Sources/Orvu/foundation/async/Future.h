#pragma once

#include <coroutine>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace orvu {

/// What a `Promise` and its `Future` share.
template <class T>
struct FutureState {
    std::optional<T> value;
    std::coroutine_handle<> waiter;
    std::function<void()> abandoned;
    bool wanted = true;
};

/// A value that comes later, for one `co_await`. Dropping it says that the value isn't wanted
/// any more; whoever holds the promise may resolve it all the same, without effect.
template <class T>
class Future {
public:
    explicit Future(std::shared_ptr<FutureState<T>> state) : state_(std::move(state)) {}
    Future(Future&&) noexcept = default;
    Future& operator=(Future&&) = delete;
    ~Future() {
        if (!state_) return;
        state_->waiter = {};
        state_->wanted = false;
        if (!state_->value && state_->abandoned) std::exchange(state_->abandoned, {})();
    }

    [[nodiscard]] bool await_ready() const { return state_->value.has_value(); }
    void await_suspend(std::coroutine_handle<> waiter) { state_->waiter = waiter; }
    T await_resume() { return std::move(*state_->value); }

private:
    std::shared_ptr<FutureState<T>> state_;
};

/// The giving side of a `Future`. Copies share one value.
template <class T>
class Promise {
public:
    Promise() : state_(std::make_shared<FutureState<T>>()) {}

    /// The one future of this promise; call it once.
    [[nodiscard]] Future<T> future() const { return Future<T>{state_}; }
    /// Gives the value and goes on with whoever awaits it, on this stack. Only the first counts.
    void resolve(T value) const {
        if (state_->value) return;
        state_->value.emplace(std::move(value));
        state_->abandoned = {};
        if (const auto waiter = std::exchange(state_->waiter, {})) waiter.resume();
    }
    /// Runs `action` once if the future is dropped before there is a value.
    void onAbandoned(std::function<void()> action) const { state_->abandoned = std::move(action); }
    [[nodiscard]] bool isWanted() const { return state_->wanted; }

private:
    std::shared_ptr<FutureState<T>> state_;
};

}  // namespace orvu
