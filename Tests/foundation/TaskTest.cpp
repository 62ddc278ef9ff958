#include "foundation/async/Task.h"

#include "fakes/VirtualMainLoop.h"
#include "foundation/async/Future.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace orvu {
namespace {

using namespace std::chrono_literals;

/// Says when it goes.
class Witness {
public:
    Witness(std::vector<std::string>& log, std::string name) : log_(&log), name_(std::move(name)) {}
    Witness(const Witness&) = delete;
    Witness& operator=(const Witness&) = delete;
    ~Witness() { log_->push_back(name_); }

private:
    std::vector<std::string>* log_;
    std::string name_;
};

class TaskTest : public testing::Test {
public:
    Task<int> number(int value) {
        ++begun;
        co_return value;
    }
    Task<int> sleeping(std::chrono::milliseconds delay, int value) {
        const Witness witness{log, "sleeping " + std::to_string(value)};
        co_await Sleep{loop, delay};
        co_return value;
    }
    Task<int> sum(int a, int b) {
        const Witness witness{log, "sum"};
        const int first = co_await sleeping(10ms, a);
        const int second = co_await sleeping(20ms, b);
        co_return first + second;
    }

    VirtualMainLoop loop;
    std::vector<std::string> log;
    int begun = 0;
};

TEST_F(TaskTest, DoesNotBeginBeforeItIsStarted) {
    auto task = number(3);
    EXPECT_EQ(begun, 0);

    task.start();

    EXPECT_EQ(begun, 1);
    ASSERT_TRUE(task.isDone());
    EXPECT_EQ(task.result(), 3);
}

TEST_F(TaskTest, ATaskThatWasNeverStartedCanBeDropped) {
    {
        const auto task = number(3);
    }

    EXPECT_EQ(begun, 0);
}

TEST_F(TaskTest, GoesOnWhenItsSleepIsOverAndNotBefore) {
    auto task = sleeping(90ms, 1);
    task.start();

    loop.advance(89ms);
    EXPECT_FALSE(task.isDone());
    loop.advance(1ms);

    EXPECT_TRUE(task.isDone());
    EXPECT_EQ(loop.pendingTimers(), 0U);
}

TEST_F(TaskTest, NestedTasksHandTheirResultsUp) {
    auto task = sum(2, 3);
    task.start();

    loop.advance(29ms);
    EXPECT_FALSE(task.isDone());
    loop.advance(1ms);

    ASSERT_TRUE(task.isDone());
    EXPECT_EQ(task.result(), 5);
}

TEST_F(TaskTest, DroppingItWhileItSleepsTakesBackTheTimerAndDestroysItsLocals) {
    {
        auto task = sleeping(90ms, 1);
        task.start();
        EXPECT_EQ(loop.pendingTimers(), 1U);
    }

    EXPECT_EQ(loop.pendingTimers(), 0U);
    EXPECT_EQ(log, (std::vector<std::string>{"sleeping 1"}));
    loop.advance(1h);  // nothing of it may run
}

TEST_F(TaskTest, DroppingTheOuterTaskDropsTheInnerOneFirst) {
    {
        auto task = sum(2, 3);
        task.start();
        loop.advance(10ms);
        EXPECT_EQ(log, (std::vector<std::string>{"sleeping 2"}));
    }

    EXPECT_EQ(loop.pendingTimers(), 0U);
    EXPECT_EQ(log, (std::vector<std::string>{"sleeping 2", "sleeping 3", "sum"}));
}

TEST_F(TaskTest, NothingBehindTheWaitRunsAfterACancel) {
    bool wentOn = false;
    const auto run = [](VirtualMainLoop& on, bool& flag) -> Task<void> {
        co_await Sleep{on, 5ms};
        flag = true;
    };
    auto task = run(loop, wentOn);
    task.start();

    task.cancel();
    loop.advance(1s);

    EXPECT_FALSE(wentOn);
    EXPECT_FALSE(task.isDone());
}

TEST_F(TaskTest, AssigningANewTaskCancelsTheOldOne) {
    auto task = sleeping(10ms, 1);
    task.start();

    task = sleeping(20ms, 2);
    task.start();
    loop.advance(20ms);

    ASSERT_TRUE(task.isDone());
    EXPECT_EQ(task.result(), 2);
    EXPECT_EQ(log, (std::vector<std::string>{"sleeping 1", "sleeping 2"}));
}

TEST_F(TaskTest, AMovedTaskKeepsRunning) {
    auto first = sleeping(10ms, 1);
    first.start();
    auto second = std::move(first);

    loop.advance(10ms);

    EXPECT_TRUE(second.isDone());
    EXPECT_EQ(second.result(), 1);
}

TEST_F(TaskTest, AnEmptyTaskIsNotDoneAndCanBeCancelled) {
    Task<void> task;

    task.cancel();

    EXPECT_FALSE(task.isDone());
}

TEST_F(TaskTest, SleepsThatFallDueAtOneMomentGoOnInTheOrderOfTheirStart) {
    std::string seen;
    const auto run = [](VirtualMainLoop& on, std::string& into, char name) -> Task<void> {
        co_await Sleep{on, 5ms};
        into += name;
    };
    auto first = run(loop, seen, '1');
    auto second = run(loop, seen, '2');
    first.start();
    second.start();

    loop.advance(5ms);

    EXPECT_EQ(seen, "12");
}

TEST_F(TaskTest, ASleepOfNoTimeStillWaitsForTheLoop) {
    auto task = sleeping(0ms, 1);
    task.start();
    EXPECT_FALSE(task.isDone());

    loop.advance(0ms);

    EXPECT_TRUE(task.isDone());
}

TEST_F(TaskTest, AMillionAwaitsOfTasksThatEndAtOnceDoNotGrowTheStack) {
    const auto count = [](TaskTest& test) -> Task<long> {
        long total = 0;
        for (int i = 0; i < 1000000; ++i) total += co_await test.number(1);
        co_return total;
    };
    auto task = count(*this);

    task.start();

    ASSERT_TRUE(task.isDone());
    EXPECT_EQ(task.result(), 1000000);
}

TEST_F(TaskTest, AMillionAwaitsAfterAWaitDoNotGrowTheStackEither) {
    const auto count = [](TaskTest& test) -> Task<long> {
        co_await Sleep{test.loop, 1ms};
        long total = 0;
        for (int i = 0; i < 1000000; ++i) total += co_await test.number(1);
        co_return total;
    };
    auto task = count(*this);
    task.start();

    loop.advance(1ms);

    ASSERT_TRUE(task.isDone());
    EXPECT_EQ(task.result(), 1000000);
}

TEST_F(TaskTest, AMillionValuesThatAreThereAlreadyDoNotGrowTheStack) {
    const auto count = []() -> Task<long> {
        long total = 0;
        for (int i = 0; i < 1000000; ++i) {
            const Promise<int> promise;
            promise.resolve(1);
            total += co_await promise.future();
        }
        co_return total;
    };
    auto task = count();

    task.start();

    EXPECT_EQ(task.result(), 1000000);
}

TEST_F(TaskTest, AResultThatCanOnlyBeMovedIsHandedOver) {
    const auto make = []() -> Task<std::unique_ptr<int>> { co_return std::make_unique<int>(9); };
    const auto take = [&]() -> Task<int> {
        const auto value = co_await make();
        co_return *value;
    };
    auto task = take();

    task.start();

    EXPECT_EQ(task.result(), 9);
}

TEST(ScheduledTest, DroppingItCallsTheWorkOff) {
    VirtualMainLoop loop;
    int runs = 0;
    {
        const auto timer = loop.after(5ms, [&] { ++runs; });
        const auto idle = loop.whenIdle([&] { ++runs; });
    }

    loop.advance(1s);

    EXPECT_FALSE(loop.runIdle());
    EXPECT_EQ(runs, 0);
}

TEST(ScheduledTest, DroppingItAfterTheWorkRanHasNoEffect) {
    VirtualMainLoop loop;
    int runs = 0;
    {
        const auto timer = loop.after(5ms, [&] { ++runs; });
        loop.advance(5ms);
    }

    EXPECT_EQ(runs, 1);
}

TEST(ScheduledTest, AssigningCallsOffTheWorkHeldBefore) {
    VirtualMainLoop loop;
    std::string seen;
    auto timer = loop.after(5ms, [&] { seen += '1'; });

    timer = loop.after(5ms, [&] { seen += '2'; });
    loop.advance(5ms);

    EXPECT_EQ(seen, "2");
}

}  // namespace
}  // namespace orvu
