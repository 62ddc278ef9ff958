#include "platform/Within.h"

#include "fakes/VirtualMainLoop.h"

#include <gtest/gtest.h>

#include <optional>

namespace orvu {
namespace {

using namespace std::chrono_literals;

class WithinTest : public testing::Test {
protected:
    static Task<int> comes(Future<int> awaited) { co_return co_await awaited; }
    static Task<void> keep(Task<int> work, std::optional<int>* kept) { *kept = co_await work; }
    void start(std::chrono::milliseconds limit) {
        scope.start(keep(within(&loop, limit, comes(promise.future()), -1), &result));
    }

    VirtualMainLoop loop;
    Promise<int> promise;
    std::optional<int> result;
    TaskScope scope;
};

TEST_F(WithinTest, WhatComesInTimeCounts) {
    start(5s);
    loop.advance(4999ms);
    EXPECT_EQ(result, std::nullopt);
    promise.resolve(7);

    EXPECT_EQ(result, 7);
    EXPECT_EQ(loop.pendingTimers(), 0U);
    EXPECT_EQ(scope.size(), 0U);
}

TEST_F(WithinTest, WhatIsThereAtOnceCounts) {
    promise.resolve(7);
    start(5s);
    EXPECT_EQ(result, 7);
}

TEST_F(WithinTest, WhatTakesLongerIsEnded) {
    start(5s);
    loop.advance(5s);

    EXPECT_EQ(result, -1);
    EXPECT_FALSE(promise.isWanted());
    EXPECT_EQ(scope.size(), 0U);
    promise.resolve(7);
    EXPECT_EQ(result, -1);
}

TEST_F(WithinTest, WhoIsEndedEndsIt) {
    start(5s);
    scope.cancel();

    EXPECT_FALSE(promise.isWanted());
    EXPECT_EQ(loop.pendingTimers(), 0U);
    promise.resolve(7);
    EXPECT_EQ(result, std::nullopt);
}

}  // namespace
}  // namespace orvu
