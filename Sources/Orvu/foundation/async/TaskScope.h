#pragma once

#include "foundation/async/Task.h"

#include <cstddef>

namespace orvu {

/// Owns work that runs on its own, and ends it with itself: at any moment, and safely also from
/// within that work. So its owner keeps it as the last member.
///
/// In work that was ended no `co_await` returns any more:
/// - What waits goes at once. Its locals are destroyed, the newest first, and every awaited thing
///   takes its callback back.
/// - What runs, because the end came from within it or from something it called, goes on up to
///   its next `co_await` or `co_return`, be that in a task it awaits. The wait isn't entered, and
///   the work goes there, before whoever resumed it goes on.
///
/// So after a call that may end its owner, a task touches nothing of the owner before the next
/// `co_await` or `co_return`. This holds for the destructors of its locals too.
class TaskScope {
public:
    TaskScope() = default;
    TaskScope(const TaskScope&) = delete;
    TaskScope& operator=(const TaskScope&) = delete;
    ~TaskScope();

    /// Runs `work`, which hasn't begun, up to its first wait, and keeps it until its end. The scope
    /// may be gone when this returns. Work for a scope that is going is dropped.
    void start(Task<void> work);
    /// Ends all work there is, the newest first.
    void cancel();
    /// How many pieces of work have not ended.
    [[nodiscard]] std::size_t size() const { return size_; }

private:
    struct Work;

    Work* newest_ = nullptr;
    std::size_t size_ = 0;
    bool isGoing_ = false;
};

}  // namespace orvu
