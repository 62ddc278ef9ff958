#pragma once

#include "foundation/async/Future.h"
#include "foundation/async/TaskScope.h"
#include "platform/MainLoop.h"

#include <chrono>
#include <utility>

namespace orvu {

template <class T>
[[nodiscard]] Task<void> tellWhenDone(Task<T> work, Promise<T> promise) {
    promise.resolve(co_await work);
}

/// What `work`, which hasn't begun, gives, or `otherwise` if it takes longer than `limit`: then it
/// is ended. `loop` must outlive the task.
template <class T>
[[nodiscard]] Task<T> within(MainLoop* loop, std::chrono::milliseconds limit, Task<T> work,
                             T otherwise) {
    const Promise<T> promise;
    auto first = promise.future();
    const Scheduled patience =
        loop->after(limit, [promise, otherwise] { promise.resolve(otherwise); });
    TaskScope scope;
    scope.start(tellWhenDone(std::move(work), promise));
    co_return co_await first;
}

}  // namespace orvu
