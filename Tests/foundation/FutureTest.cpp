#include "foundation/async/Future.h"

#include "foundation/async/Task.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace orvu {
namespace {

Task<std::string> awaited(Promise<std::string> promise) { co_return co_await promise.future(); }

TEST(FutureTest, AValueThatIsThereIsTakenAtOnce) {
    const Promise<std::string> promise;
    promise.resolve("now");

    auto task = awaited(promise);
    task.start();

    ASSERT_TRUE(task.isDone());
    EXPECT_EQ(task.result(), "now");
}

TEST(FutureTest, TheAwaiterGoesOnWhenTheValueComes) {
    const Promise<std::string> promise;
    auto task = awaited(promise);
    task.start();
    EXPECT_FALSE(task.isDone());

    promise.resolve("later");

    ASSERT_TRUE(task.isDone());
    EXPECT_EQ(task.result(), "later");
}

TEST(FutureTest, OnlyTheFirstValueCounts) {
    const Promise<std::string> promise;
    auto task = awaited(promise);
    task.start();

    promise.resolve("first");
    promise.resolve("second");

    EXPECT_EQ(task.result(), "first");
}

TEST(FutureTest, AValueThatCanOnlyBeMovedIsHandedOver) {
    const Promise<std::unique_ptr<int>> promise;
    const auto take = [](Promise<std::unique_ptr<int>> from) -> Task<int> {
        const auto value = co_await from.future();
        co_return *value;
    };
    auto task = take(promise);
    task.start();

    promise.resolve(std::make_unique<int>(7));

    EXPECT_EQ(task.result(), 7);
}

TEST(FutureTest, ResolvingAfterTheFutureWasDroppedHasNoEffect) {
    const Promise<std::string> promise;
    {
        auto task = awaited(promise);
        task.start();
        EXPECT_TRUE(promise.isWanted());
    }

    promise.resolve("too late");

    EXPECT_FALSE(promise.isWanted());
}

TEST(FutureTest, DroppingItBeforeTheValueRunsTheAbandonedHookOnce) {
    const Promise<std::string> promise;
    int abandoned = 0;
    promise.onAbandoned([&] { ++abandoned; });
    {
        const auto future = promise.future();
        EXPECT_EQ(abandoned, 0);
    }

    promise.resolve("too late");

    EXPECT_EQ(abandoned, 1);
}

TEST(FutureTest, DroppingItAfterTheValueDoesNotCountAsAbandoned) {
    const Promise<std::string> promise;
    int abandoned = 0;
    promise.onAbandoned([&] { ++abandoned; });

    {
        const auto future = promise.future();
        promise.resolve("in time");
    }

    EXPECT_EQ(abandoned, 0);
}

TEST(FutureTest, CancellingTheTaskThatWaitsAbandonsTheFuture) {
    const Promise<std::string> promise;
    int abandoned = 0;
    promise.onAbandoned([&] { ++abandoned; });
    auto task = awaited(promise);
    task.start();

    task.cancel();

    EXPECT_EQ(abandoned, 1);
    EXPECT_FALSE(promise.isWanted());
}

TEST(FutureTest, MovingItAbandonsNothing) {
    const Promise<std::string> promise;
    int abandoned = 0;
    promise.onAbandoned([&] { ++abandoned; });
    auto first = promise.future();

    {
        const auto second = std::move(first);
        EXPECT_EQ(abandoned, 0);
    }

    EXPECT_EQ(abandoned, 1);
}

TEST(FutureTest, WhatTheHookHoldsIsLetGoWhenTheValueComes) {
    const Promise<std::string> promise;
    const auto held = std::make_shared<int>(1);
    promise.onAbandoned([held] {});

    promise.resolve("value");

    EXPECT_EQ(held.use_count(), 1);
}

TEST(FutureTest, TheAwaiterMayDropThePromiseThatResumedIt) {
    auto promise = std::make_unique<Promise<std::string>>();
    const auto drop = [](std::unique_ptr<Promise<std::string>>& owner,
                         Future<std::string> future) -> Task<std::string> {
        auto value = co_await future;
        owner.reset();
        co_return value;
    };
    auto task = drop(promise, promise->future());
    task.start();

    promise->resolve("last words");

    EXPECT_EQ(task.result(), "last words");
}

}  // namespace
}  // namespace orvu
