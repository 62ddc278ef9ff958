#include "foundation/async/FutureScope.h"

#include <gtest/gtest.h>

#include <optional>
#include <utility>

namespace orvu {
namespace {

class FutureScopeTest : public testing::Test {
protected:
    static Task<int> comes(Future<int> awaited) { co_return co_await awaited; }
    static Task<void> keep(Future<int> awaited, std::optional<int>* kept) {
        *kept = co_await awaited;
    }

    Promise<int> promise;
    std::optional<int> result;
    std::optional<FutureScope> scope{std::in_place};
    TaskScope mine;
};

TEST_F(FutureScopeTest, WhatItsTaskGivesComes) {
    mine.start(keep(scope->start(comes(promise.future())), &result));
    EXPECT_EQ(result, std::nullopt);
    promise.resolve(7);
    EXPECT_EQ(result, 7);
}

TEST_F(FutureScopeTest, WhatIsGivenAtOnceComes) {
    promise.resolve(7);
    mine.start(keep(scope->start(comes(promise.future())), &result));
    EXPECT_EQ(result, 7);
}

TEST_F(FutureScopeTest, WhoDropsTheFutureEndsTheTask) {
    mine.start(keep(scope->start(comes(promise.future())), &result));
    mine.cancel();
    EXPECT_FALSE(promise.isWanted());
    promise.resolve(7);
    EXPECT_EQ(result, std::nullopt);
}

TEST_F(FutureScopeTest, ItsEndEndsAllAndNothingComes) {
    mine.start(keep(scope->start(comes(promise.future())), &result));
    scope.reset();
    EXPECT_FALSE(promise.isWanted());
    promise.resolve(7);
    EXPECT_EQ(result, std::nullopt);
    EXPECT_EQ(mine.size(), 1U);
}

TEST_F(FutureScopeTest, TasksKnowNothingOfEachOther) {
    const Promise<int> other;
    std::optional<int> otherResult;
    mine.start(keep(scope->start(comes(promise.future())), &result));
    {
        TaskScope brief;
        brief.start(keep(scope->start(comes(other.future())), &otherResult));
    }
    EXPECT_FALSE(other.isWanted());
    promise.resolve(7);
    EXPECT_EQ(result, 7);
    EXPECT_EQ(otherResult, std::nullopt);
}

TEST_F(FutureScopeTest, WhoHearsMayBeginAnotherOrEndIt) {
    const auto again = [](FutureScope* from, Future<int> first, Future<int> second,
                          std::optional<int>* kept) -> Task<void> {
        auto one = from->start(comes(std::move(first)));
        const int begun = co_await one;
        auto two = from->start(comes(std::move(second)));
        *kept = begun + co_await two;
    };
    const Promise<int> second;
    mine.start(again(&*scope, promise.future(), second.future(), &result));
    promise.resolve(1);
    second.resolve(2);
    EXPECT_EQ(result, 3);
}

}  // namespace
}  // namespace orvu
