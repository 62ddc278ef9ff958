#include "foundation/async/TaskScope.h"

#include <utility>

namespace orvu {

/// A task that a scope runs, and its trampoline: a coroutine without an end of its own, which
/// every awaited thing goes on with in place of the task. So each stretch of the work begins and
/// ends in `run`, and there the task's frame can go without being on the stack. This is the
/// promise of that coroutine, hence one allocation holds all.
struct TaskScope::Work : TaskControl {
    struct Trampoline {
        using promise_type = Work;
        std::coroutine_handle<Work> handle;
    };
    /// Runs the work while the trampoline counts as suspended, since an awaited thing may go on
    /// with it at once, on this stack.
    struct Turn {
        [[nodiscard]] bool await_ready() const noexcept { return false; }
        void await_suspend(std::coroutine_handle<Work> self) const noexcept {
            self.promise().run();
        }
        void await_resume() const noexcept {}
    };

    static Trampoline make() {
        for (;;) co_await Turn{};
    }
    Trampoline get_return_object() { return {std::coroutine_handle<Work>::from_promise(*this)}; }
    std::suspend_always initial_suspend() noexcept { return {}; }
    std::suspend_always final_suspend() noexcept { return {}; }
    void return_void() {}
    [[noreturn]] void unhandled_exception() noexcept { std::terminate(); }

    void join(TaskScope& owner, Task<void> work);
    void leave();
    void run();
    /// Destroys the task and this object.
    void release();

    TaskScope* scope = nullptr;  ///< null once the work has ended
    Work* older = nullptr;
    Work* newer = nullptr;
    Task<void> task;
    int depth = 0;  ///< how many calls of `run` are on the stack
};

void TaskScope::Work::join(TaskScope& owner, Task<void> work) {
    task = std::move(work);
    task.handle_.promise().control = this;
    trampoline = std::coroutine_handle<Work>::from_promise(*this);
    waiting = task.handle_;

    scope = &owner;
    older = std::exchange(owner.newest_, this);
    if (older) older->newer = this;
    ++owner.size_;
}

void TaskScope::Work::leave() {
    if (older) older->newer = newer;
    (newer ? newer->older : scope->newest_) = older;
    --scope->size_;
    scope = nullptr;
}

void TaskScope::Work::run() {
    if (hasEnded) return;  // what goes with the work may give it what it waited for
    ++depth;
    waiting.resume();
    --depth;
    if (!hasEnded && task.isDone()) {
        leave();
        hasEnded = true;
    }
    if (hasEnded && depth == 0) release();
}

void TaskScope::Work::release() {
    task.cancel();
    trampoline.destroy();
}

TaskScope::~TaskScope() {
    isGoing_ = true;
    cancel();
}

void TaskScope::start(Task<void> work) {
    if (isGoing_) return;
    Work& added = Work::make().handle.promise();
    added.join(*this, std::move(work));
    added.trampoline.resume();  // last: the scope may go with it
}

void TaskScope::cancel() {
    // All ends before anything goes: what goes may call anything, and end the scope itself.
    Work* const newest = std::exchange(newest_, nullptr);
    size_ = 0;
    for (Work* work = newest; work; work = work->older) {
        work->hasEnded = true;
        work->scope = nullptr;
    }
    for (Work* work = newest; work;) {
        Work* const older = work->older;
        if (work->depth == 0) work->release();  // otherwise it runs, and `run` sees to it
        work = older;
    }
}

}  // namespace orvu
