#pragma once

#include "foundation/async/Future.h"

#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace orvu {

/// Does work beside the main thread.
class BackgroundWork {
public:
    virtual ~BackgroundWork() = default;

    /// What `work` gives, or `failed` if it throws or isn't done. `work` touches nothing that others
    /// see. The future is resolved on the main thread, never within this call.
    template <class T>
    [[nodiscard]] Future<T> run(std::function<T()> work, T failed) {
        const Promise<T> promise;
        const auto box = std::make_shared<std::optional<T>>();  // the thread's until it ended
        add([work = std::move(work), box] { box->emplace(work()); },
            [promise, box, failed = std::move(failed)](Outcome outcome) {
                const bool hasResult = outcome == Outcome::done && *box;
                promise.resolve(hasResult ? std::move(**box) : failed);
            });
        return promise.future();
    }

protected:
    enum class Outcome {
        done,
        late,  ///< it was given up, and may still be at it
    };
    /// Runs `work`, which may throw, in a thread, and `settled` once on the main thread.
    virtual void add(std::function<void()> work, std::function<void(Outcome)> settled) = 0;
};

}  // namespace orvu
