#include "foundation/async/TaskScope.h"

#include "fakes/VirtualMainLoop.h"
#include "foundation/async/Future.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orvu {
namespace {

using namespace std::chrono_literals;

using Log = std::vector<std::string>;

/// Says when it goes.
class Witness {
public:
    Witness(Log& log, std::string name) : log_(&log), name_(std::move(name)) {}
    Witness(const Witness&) = delete;
    Witness& operator=(const Witness&) = delete;
    ~Witness() { log_->push_back(name_); }

private:
    Log* log_;
    std::string name_;
};

/// Does something when it goes.
class Parting {
public:
    explicit Parting(std::function<void()> action) : action_(std::move(action)) {}
    Parting(const Parting&) = delete;
    Parting& operator=(const Parting&) = delete;
    ~Parting() { action_(); }

private:
    std::function<void()> action_;
};

/// An awaitable that counts who waits, and does something on the occasion.
struct Door {
    bool isOpen = false;
    int entered = 0;
    int left = 0;
    std::function<void(std::coroutine_handle<>)> onEnter = [](auto) {};

    [[nodiscard]] bool await_ready() const { return isOpen; }
    void await_suspend(std::coroutine_handle<> waiter) {
        ++entered;
        const auto action = onEnter;  // it may end the test's hold on this door
        action(waiter);
    }
    void await_resume() { ++left; }
};

/// An awaitable that finds out only when it is entered that there is nothing to wait for.
struct Turnstile {
    std::function<void()> onEnter = [] {};

    [[nodiscard]] bool await_ready() const { return false; }
    bool await_suspend(std::coroutine_handle<> /*waiter*/) const {
        onEnter();
        return false;
    }
    void await_resume() const {}
};

class TaskScopeTest : public testing::Test {
public:
    Task<void> sleeping(std::string name) {
        const Witness witness{log, name};
        co_await Sleep{loop, 10ms};
        log.push_back(name + " goes on");
    }
    Task<void> doing(std::function<void()> action) {
        const Witness witness{log, "doing"};
        action();
        co_return;
    }
    Task<void> doingThenWaiting(std::function<void()> action, Door& at) {
        const Witness witness{log, "doing"};
        action();
        log.emplace_back("still runs");
        co_await at;
        log.emplace_back("goes on");
    }
    Task<void> outer(std::function<Task<void>()> inner) {
        const Witness witness{log, "outer"};
        co_await inner();
        log.emplace_back("outer goes on");
    }
    Task<int> number(int value) { co_return value; }
    Task<void> waitingFor(Future<int> future, std::function<void(int)> action) {
        action(co_await future);
    }
    [[nodiscard]] std::function<void()> goingOf(std::unique_ptr<TaskScope>& which) {
        return [&which] { which.reset(); };
    }

    VirtualMainLoop loop;
    Log log;
    Door door;
    std::unique_ptr<TaskScope> scope = std::make_unique<TaskScope>();
};

TEST_F(TaskScopeTest, WorkRunsUpToItsFirstWaitAtOnceAndIsHeldUntilItsEnd) {
    scope->start(sleeping("a"));
    EXPECT_EQ(scope->size(), 1U);
    EXPECT_EQ(log, Log{});

    loop.advance(10ms);

    EXPECT_EQ(log, (Log{"a goes on", "a"}));
    EXPECT_EQ(scope->size(), 0U);
}

TEST_F(TaskScopeTest, WorkThatEndsAtOnceIsNotHeld) {
    const auto held = std::make_shared<int>(1);
    const auto run = [](std::shared_ptr<int>) -> Task<void> { co_return; };

    scope->start(run(held));

    EXPECT_EQ(scope->size(), 0U);
    EXPECT_EQ(held.use_count(), 1);
}

TEST_F(TaskScopeTest, WorkThatEndsAfterAWaitIsReleasedThere) {
    const Promise<int> promise;
    const auto held = std::make_shared<int>(1);
    scope->start(waitingFor(promise.future(), [held](int) {}));
    EXPECT_EQ(held.use_count(), 2);

    promise.resolve(1);

    EXPECT_EQ(scope->size(), 0U);
    EXPECT_EQ(held.use_count(), 1);
}

TEST_F(TaskScopeTest, PiecesOfWorkEndInAnyOrder) {
    const Promise<int> first;
    const Promise<int> second;
    const Promise<int> third;
    std::string seen;
    for (const auto* promise : {&first, &second, &third}) {
        scope->start(
            waitingFor(promise->future(), [&](int value) { seen += std::to_string(value); }));
    }

    second.resolve(2);
    EXPECT_EQ(scope->size(), 2U);
    third.resolve(3);
    EXPECT_EQ(scope->size(), 1U);
    first.resolve(1);

    EXPECT_EQ(scope->size(), 0U);
    EXPECT_EQ(seen, "231");
}

TEST_F(TaskScopeTest, AwaitedTasksHandTheirResultsUp) {
    int total = 0;
    const auto sum = [](TaskScopeTest& test) -> Task<int> {
        const int first = co_await test.number(2);
        co_await Sleep{test.loop, 5ms};
        co_return first + co_await test.number(3);
    };
    const auto run = [](Task<int> adding, int& into) -> Task<void> { into = co_await adding; };

    scope->start(run(sum(*this), total));
    loop.advance(5ms);

    EXPECT_EQ(total, 5);
    EXPECT_EQ(scope->size(), 0U);
}

TEST_F(TaskScopeTest, CancelDestroysWhatWaitsAndTakesItsTimersBack) {
    scope->start(outer([this] { return sleeping("a"); }));
    EXPECT_EQ(loop.pendingTimers(), 1U);

    scope->cancel();

    EXPECT_EQ(log, (Log{"a", "outer"}));
    EXPECT_EQ(loop.pendingTimers(), 0U);
    EXPECT_EQ(scope->size(), 0U);
}

TEST_F(TaskScopeTest, TheEndOfTheScopeDestroysWhatWaitsTheNewestFirst) {
    scope->start(sleeping("a"));
    scope->start(outer([this] { return sleeping("b"); }));
    scope->start(sleeping("c"));

    scope.reset();

    EXPECT_EQ(log, (Log{"c", "b", "outer", "a"}));
    EXPECT_EQ(loop.pendingTimers(), 0U);
}

TEST_F(TaskScopeTest, ACancelledScopeTakesNewWork) {
    scope->start(sleeping("a"));
    scope->cancel();

    scope->start(sleeping("b"));
    loop.advance(10ms);

    EXPECT_EQ(log, (Log{"a", "b goes on", "b"}));
}

TEST_F(TaskScopeTest, TheEndAbandonsTheFutureThatIsAwaited) {
    const Promise<int> promise;
    int abandoned = 0;
    promise.onAbandoned([&] { ++abandoned; });
    scope->start(waitingFor(promise.future(), [](int) {}));

    scope->cancel();

    EXPECT_EQ(abandoned, 1);
    EXPECT_FALSE(promise.isWanted());
}

TEST_F(TaskScopeTest, APromiseResolvedAfterTheEndDoesNothing) {
    const Promise<int> promise;
    int received = 0;
    scope->start(waitingFor(promise.future(), [&](int value) { received = value; }));
    scope.reset();

    promise.resolve(1);

    EXPECT_EQ(received, 0);
}

TEST_F(TaskScopeTest, EndedFromWithinItNeverEntersItsNextWait) {
    scope->start(doingThenWaiting(goingOf(scope), door));

    EXPECT_EQ(log, (Log{"still runs", "doing"}));
    EXPECT_EQ(door.entered, 0);
}

TEST_F(TaskScopeTest, CancelledFromWithinItNeverEntersItsNextWait) {
    scope->start(doingThenWaiting([this] { scope->cancel(); }, door));

    EXPECT_EQ(log, (Log{"still runs", "doing"}));
    EXPECT_EQ(door.entered, 0);
    EXPECT_EQ(scope->size(), 0U);
}

TEST_F(TaskScopeTest, EndedFromWithinAfterAWaitItNeverEntersTheNextOne) {
    const auto run = [](TaskScopeTest& test) -> Task<void> {
        const Witness witness{test.log, "locals"};
        co_await Sleep{test.loop, 10ms};
        test.scope.reset();
        co_await test.door;
        test.log.emplace_back("goes on");
    };
    scope->start(run(*this));

    loop.advance(10ms);

    EXPECT_EQ(log, Log{"locals"});
    EXPECT_EQ(door.entered, 0);
}

TEST_F(TaskScopeTest, EndedFromWithinItTakesNoValueThatIsThereAlready) {
    door.isOpen = true;

    scope->start(doingThenWaiting(goingOf(scope), door));

    EXPECT_EQ(log, (Log{"still runs", "doing"}));
    EXPECT_EQ(door.left, 0);
}

TEST_F(TaskScopeTest, EndedFromWithinItRunsToItsEndIfNoWaitComes) {
    const auto held = std::make_shared<int>(1);
    const auto run = [](TaskScopeTest& test, std::shared_ptr<int>) -> Task<void> {
        const Witness witness{test.log, "locals"};
        test.scope.reset();
        test.log.emplace_back("still runs");
        co_return;
    };

    scope->start(run(*this, held));

    EXPECT_EQ(log, (Log{"still runs", "locals"}));
    EXPECT_EQ(held.use_count(), 1);
}

TEST_F(TaskScopeTest, EndedTwiceFromWithinItsLocalsGoOnce) {
    const auto endsTwice = [this] {
        scope->cancel();
        scope->cancel();
        scope.reset();
    };

    scope->start(doingThenWaiting(endsTwice, door));

    EXPECT_EQ(log, (Log{"still runs", "doing"}));
}

TEST_F(TaskScopeTest, EndedFromWithinWorkIsNotCountedThoughItStillRuns) {
    std::optional<std::size_t> before;
    std::optional<std::size_t> after;

    scope->start(doing([&] {
        before = scope->size();
        scope->cancel();
        after = scope->size();
    }));

    EXPECT_EQ(before, 1U);
    EXPECT_EQ(after, 0U);
}

TEST_F(TaskScopeTest, EndedFromWithinAnAwaitedTaskAllGoesAtThatTasksNextWait) {
    scope->start(outer([this] { return doingThenWaiting(goingOf(scope), door); }));

    EXPECT_EQ(log, (Log{"still runs", "doing", "outer"}));
    EXPECT_EQ(door.entered, 0);
}

TEST_F(TaskScopeTest, EndedFromWithinAnAwaitedTaskThatEndsNoAwaiterGoesOn) {
    scope->start(outer([this] { return doing(goingOf(scope)); }));

    EXPECT_EQ(log, (Log{"doing", "outer"}));
}

TEST_F(TaskScopeTest, EndedFromWithinATaskTwoAwaitsDownAllGoesFromTheInside) {
    const auto middle = [](TaskScopeTest& test) -> Task<void> {
        const Witness witness{test.log, "middle"};
        co_await Sleep{test.loop, 10ms};
        co_await test.doingThenWaiting(test.goingOf(test.scope), test.door);
        test.log.emplace_back("middle goes on");
    };
    scope->start(outer([&] { return middle(*this); }));

    loop.advance(10ms);

    EXPECT_EQ(log, (Log{"still runs", "doing", "middle", "outer"}));
    EXPECT_EQ(door.entered, 0);
}

TEST_F(TaskScopeTest, ATaskThatIsAwaitedAfterTheEndDoesNotBegin) {
    const auto run = [](TaskScopeTest& test, Task<void> inner) -> Task<void> {
        test.scope.reset();
        co_await inner;
        test.log.emplace_back("goes on");
    };

    scope->start(run(*this, doing([this] { log.emplace_back("begins"); })));

    EXPECT_EQ(log, Log{});
}

TEST_F(TaskScopeTest, CancelAndStartFromWithinReplaceTheWork) {
    scope->start(doingThenWaiting(
        [this] {
            scope->cancel();
            scope->start(sleeping("new"));
        },
        door));
    EXPECT_EQ(log, (Log{"still runs", "doing"}));
    EXPECT_EQ(scope->size(), 1U);

    loop.advance(10ms);

    EXPECT_EQ(log, (Log{"still runs", "doing", "new goes on", "new"}));
    EXPECT_EQ(door.entered, 0);
}

TEST_F(TaskScopeTest, WorkThatAnotherOneResumedMayEndTheScopeOfBoth) {
    const Promise<int> promise;
    scope->start(waitingFor(promise.future(), [this](int) {
        log.emplace_back("resumed");
        scope.reset();
    }));

    scope->start(doingThenWaiting([&] { promise.resolve(1); }, door));

    EXPECT_EQ(log, (Log{"resumed", "still runs", "doing"}));
    EXPECT_EQ(door.entered, 0);
}

TEST_F(TaskScopeTest, WorkOfTwoScopesMayEndBoth) {
    auto other = std::make_unique<TaskScope>();
    const Promise<int> promise;
    const auto first = [](TaskScopeTest& test, Future<int> future,
                          std::unique_ptr<TaskScope>& endsOther) -> Task<void> {
        const Witness witness{test.log, "first"};
        co_await future;
        endsOther.reset();
        co_await test.door;
        test.log.emplace_back("first goes on");
    };
    const auto second = [](TaskScopeTest& test, Promise<int> resumesFirst) -> Task<void> {
        const Witness witness{test.log, "second"};
        resumesFirst.resolve(1);
        test.log.emplace_back("second still runs");
        test.scope.reset();
        co_await test.door;
        test.log.emplace_back("second goes on");
    };
    scope->start(first(*this, promise.future(), other));

    other->start(second(*this, promise));

    EXPECT_EQ(log, (Log{"second still runs", "first", "second"}));
    EXPECT_EQ(door.entered, 1);
    EXPECT_EQ(door.left, 0);
}

TEST_F(TaskScopeTest, AnOwnerThatTheWorksObserverEndsIsGoneAtOnce) {
    struct Owner {
        Owner(TaskScopeTest& test, std::function<void()> changed)
            : test_(test), witness_(test.log, "owner"), changed_(std::move(changed)) {}
        void load() { tasks_.start(read()); }
        Task<void> read() {
            TaskScopeTest& test = test_;
            const Witness witness{test.log, "reading"};
            co_await Sleep{test.loop, 10ms};
            const auto changed = changed_;
            changed();
            test.log.emplace_back("still runs");
            co_await test.door;
            test.log.emplace_back("goes on");
        }

        TaskScopeTest& test_;
        Witness witness_;
        std::function<void()> changed_;
        TaskScope tasks_;
    };
    std::unique_ptr<Owner> owner;
    owner = std::make_unique<Owner>(*this, [&] { owner.reset(); });
    owner->load();

    loop.advance(10ms);

    EXPECT_EQ(log, (Log{"owner", "still runs", "reading"}));
}

TEST_F(TaskScopeTest, AnAwaitableMayResumeItsAwaiterAtOnce) {
    door.onEnter = [](std::coroutine_handle<> waiter) { waiter.resume(); };

    scope->start(outer([this] { return doingThenWaiting([] {}, door); }));

    EXPECT_EQ(log, (Log{"still runs", "goes on", "doing", "outer goes on", "outer"}));
    EXPECT_EQ(scope->size(), 0U);
}

TEST_F(TaskScopeTest, AnAwaitableMayEndItsAwaiterWhichGoesWhenItHasSuspended) {
    door.onEnter = [this](std::coroutine_handle<>) {
        scope.reset();
        log.emplace_back("the awaitable is still there");
    };

    scope->start(doingThenWaiting([] {}, door));

    EXPECT_EQ(log, (Log{"still runs", "the awaitable is still there", "doing"}));
    EXPECT_EQ(door.left, 0);
}

TEST_F(TaskScopeTest, AnAwaitableThatEndsItsAwaiterCannotResumeIt) {
    door.onEnter = [this](std::coroutine_handle<> waiter) {
        scope.reset();
        waiter.resume();
    };

    scope->start(doingThenWaiting([] {}, door));

    EXPECT_EQ(log, (Log{"still runs", "doing"}));
    EXPECT_EQ(door.left, 0);
}

TEST_F(TaskScopeTest, WorkResumedByItsAwaitableAtOnceMayEndTheScope) {
    door.onEnter = [](std::coroutine_handle<> waiter) { waiter.resume(); };
    Door next;
    const auto run = [](TaskScopeTest& test, Door& behind) -> Task<void> {
        const Witness witness{test.log, "locals"};
        co_await test.door;
        test.scope.reset();
        co_await behind;
        test.log.emplace_back("goes on");
    };

    scope->start(run(*this, next));

    EXPECT_EQ(log, Log{"locals"});
    EXPECT_EQ(door.left, 1);
    EXPECT_EQ(next.entered, 0);
}

TEST_F(TaskScopeTest, WorkGoesOnIfItsAwaitableFindsNothingToWaitFor) {
    const auto run = [](TaskScopeTest& test, Turnstile turnstile) -> Task<void> {
        co_await turnstile;
        test.log.emplace_back("goes on");
    };

    scope->start(run(*this, {}));
    EXPECT_EQ(log, Log{"goes on"});

    scope->start(run(*this, {.onEnter = goingOf(scope)}));
    EXPECT_EQ(log, Log{"goes on"});
}

TEST_F(TaskScopeTest, WhatGoesWithTheWorkCannotResumeIt) {
    const Promise<int> promise;
    const auto run = [](TaskScopeTest& test, Promise<int> own) -> Task<void> {
        auto future = own.future();
        const Parting parting{[&] { own.resolve(1); }};
        co_await future;
        test.log.emplace_back("goes on");
    };
    scope->start(run(*this, promise));

    scope.reset();

    EXPECT_FALSE(promise.isWanted());
    EXPECT_EQ(log, Log{});
}

TEST_F(TaskScopeTest, WhatGoesWithWorkCannotResumeOtherWorkThatEndsWithIt) {
    const Promise<int> promise;
    const auto run = [](TaskScopeTest& test, Promise<int> other) -> Task<void> {
        const Parting parting{[&] { other.resolve(1); }};
        co_await Sleep{test.loop, 10ms};
    };
    scope->start(waitingFor(promise.future(), [this](int) { log.emplace_back("goes on"); }));
    scope->start(run(*this, promise));

    scope->cancel();

    EXPECT_EQ(log, Log{});
}

TEST_F(TaskScopeTest, WhatGoesWithTheWorkMayEndTheScope) {
    const auto run = [](TaskScopeTest& test) -> Task<void> {
        const Parting parting{[&] { test.scope.reset(); }};
        co_await Sleep{test.loop, 10ms};
    };
    scope->start(sleeping("a"));
    scope->start(run(*this));
    scope->start(sleeping("b"));

    scope->cancel();

    EXPECT_EQ(scope, nullptr);
    EXPECT_EQ(log, (Log{"b", "a"}));
}

TEST_F(TaskScopeTest, WorkThatEndsMayTakeTheScopeWithItsArguments) {
    const auto run = [](std::unique_ptr<TaskScope>) -> Task<void> { co_return; };
    TaskScope& owner = *scope;
    owner.start(sleeping("a"));

    owner.start(run(std::move(scope)));

    EXPECT_EQ(log, Log{"a"});
}

TEST_F(TaskScopeTest, WorkStartedByWhatIsCancelledStays) {
    const auto run = [](TaskScopeTest& test) -> Task<void> {
        const Parting parting{[&] { test.scope->start(test.sleeping("new")); }};
        co_await Sleep{test.loop, 10ms};
    };
    scope->start(run(*this));

    scope->cancel();

    EXPECT_EQ(scope->size(), 1U);
    EXPECT_EQ(log, Log{});
}

TEST_F(TaskScopeTest, AScopeThatIsGoingStartsNothing) {
    const auto run = [](TaskScopeTest& test, TaskScope& going) -> Task<void> {
        const Parting parting{[&] { going.start(test.sleeping("new")); }};
        co_await Sleep{test.loop, 10ms};
    };
    scope->start(run(*this, *scope));

    scope.reset();

    EXPECT_EQ(loop.pendingTimers(), 0U);
    EXPECT_EQ(log, Log{});
}

TEST_F(TaskScopeTest, ATaskStartedByHandIsNoPartOfTheWorkThatHoldsIt) {
    const auto run = [](TaskScopeTest& test) -> Task<void> {
        auto byHand = test.sleeping("by hand");
        byHand.start();
        co_await Sleep{test.loop, 20ms};
        test.log.emplace_back(byHand.isDone() ? "done" : "not done");
    };
    scope->start(run(*this));
    loop.advance(20ms);
    EXPECT_EQ(log, (Log{"by hand goes on", "by hand", "done"}));

    scope->start(run(*this));
    scope.reset();
    EXPECT_EQ(log, (Log{"by hand goes on", "by hand", "done", "by hand"}));
}

TEST_F(TaskScopeTest, AMillionAwaitsDoNotGrowTheStack) {
    long total = 0;
    const auto count = [](TaskScopeTest& test, long& into) -> Task<void> {
        co_await Sleep{test.loop, 1ms};
        for (int i = 0; i < 1000000; ++i) {
            into += co_await test.number(1);
            const Promise<int> promise;
            promise.resolve(1);
            into += co_await promise.future();
        }
    };
    scope->start(count(*this, total));

    loop.advance(1ms);

    EXPECT_EQ(total, 2000000);
    EXPECT_EQ(scope->size(), 0U);
}

TEST_F(TaskScopeTest, AMillionPiecesOfWorkThatEndAtOnceLeaveNothing) {
    int runs = 0;
    const auto run = [](int& count) -> Task<void> {
        ++count;
        co_return;
    };

    for (int i = 0; i < 1000000; ++i) scope->start(run(runs));

    EXPECT_EQ(runs, 1000000);
    EXPECT_EQ(scope->size(), 0U);
}

}  // namespace
}  // namespace orvu
