#pragma once

#include "foundation/async/Future.h"
#include "foundation/async/TaskScope.h"

#include <memory>
#include <utility>
#include <vector>

namespace orvu {

/// Runs tasks for others who await what they give. Dropping the future ends its task; with the scope
/// all end, and their futures never come.
class FutureScope {
public:
    /// Runs `work`, which hasn't begun.
    template <class T>
    [[nodiscard]] Future<T> start(Task<T> work) {
        std::erase_if(scopes_, [](const auto& each) { return each->size() == 0; });
        const auto scope = scopes_.emplace_back(std::make_shared<TaskScope>());
        const Promise<T> promise;
        auto future = promise.future();
        promise.onAbandoned([task = std::weak_ptr{scope}] {
            if (const auto live = task.lock()) live->cancel();
        });
        scope->start(tell(std::move(work), promise));
        return future;
    }

private:
    template <class T>
    [[nodiscard]] static Task<void> tell(Task<T> work, Promise<T> promise) {
        promise.resolve(co_await work);
    }

    std::vector<std::shared_ptr<TaskScope>> scopes_;
};

}  // namespace orvu
