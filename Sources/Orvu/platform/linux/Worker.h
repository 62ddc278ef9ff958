#pragma once

#include "foundation/async/Future.h"
#include "platform/MainLoop.h"

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace orvu {

/// Does pieces of work in threads of its own, one after the other, and hands the results to the
/// main thread. Work that takes longer than the deadline counts as failed: its thread is left
/// alone, and the next piece begins in another. While too many are left alone, all work fails.
class Worker {
public:
    /// What happens to the work at hand when the room goes.
    enum class AtEnd {
        forget,  ///< it is left alone, and what waits is never begun
        finish,  ///< it is done first
    };
    struct Limits {
        std::optional<std::chrono::milliseconds> deadline;  ///< nothing for no limit
        int abandoned = 0;                                  ///< how many threads at most
    };

    /// `loop` must outlive the room.
    Worker(MainLoop& loop, AtEnd atEnd, Limits limits);
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;
    ~Worker();

    /// What `work` gives, or `failed` if it throws or does not end in time. `work` touches nothing
    /// that others see. The future is resolved on the main thread, never within this call.
    template <class T>
    [[nodiscard]] Future<T> run(std::function<T()> work, T failed) {
        const Promise<T> promise;
        const auto box = std::make_shared<std::optional<T>>();  // the thread's until it ended
        add({[work = std::move(work), box] { box->emplace(work()); },
             [promise, box, failed = std::move(failed)](Outcome outcome) {
                 const bool hasResult = outcome == Outcome::done && *box;
                 promise.resolve(hasResult ? std::move(**box) : failed);
             }});
        return promise.future();
    }

private:
    enum class Outcome { done, late };
    struct Job {
        std::function<void()> work;            ///< in a thread
        std::function<void(Outcome)> settled;  ///< on the main thread, once
    };
    struct State;

    void add(Job job);

    const std::shared_ptr<State> state_;
};

}  // namespace orvu
