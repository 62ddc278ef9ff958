#include "site/icons/FetchTurns.h"

#include "foundation/async/TaskScope.h"

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <random>
#include <string>
#include <vector>

namespace orvu {
namespace {

using Strings = std::vector<std::string>;

class FetchTurnsTest : public testing::Test {
protected:
    /// Wants a turn, and keeps it until it is told to end.
    void want(const std::string& host) { wants.start(hold(host)); }
    [[nodiscard]] Task<void> hold(std::string host) {
        const auto turn = co_await turns.next(host);
        began.push_back(host);
        const Promise<bool> end;
        running.emplace_back(host, end);
        auto future = end.future();
        static_cast<void>(co_await future);
    }
    /// Ends the oldest fetch that runs.
    void endOne() {
        const auto oldest = running.front().second;
        running.pop_front();
        oldest.resolve(true);
    }

    Strings began;
    std::deque<std::pair<std::string, Promise<bool>>> running;
    FetchTurns turns{{.inAll = 3, .perHost = 2}};
    TaskScope wants;
};

TEST_F(FetchTurnsTest, TurnsAreGivenAtOnceUpToTheLimitOfAHost) {
    for (int i = 0; i < 5; ++i) want("a");
    EXPECT_EQ(began, (Strings{"a", "a"}));

    endOne();

    EXPECT_EQ(began, (Strings{"a", "a", "a"}));
}

TEST_F(FetchTurnsTest, TurnsAreGivenUpToTheLimitInAll) {
    for (const auto* each : {"a", "b", "c", "d"}) want(each);
    EXPECT_EQ(began, (Strings{"a", "b", "c"}));

    endOne();

    EXPECT_EQ(began, (Strings{"a", "b", "c", "d"}));
}

TEST_F(FetchTurnsTest, TheHostFromWhichTheFewestFetchIsNext) {
    for (const auto* each : {"a", "a", "b", "a", "b", "c"}) want(each);
    EXPECT_EQ(began, (Strings{"a", "a", "b"}));

    endOne();
    EXPECT_EQ(began.back(), "c");
    endOne();
    EXPECT_EQ(began.back(), "a");
}

TEST_F(FetchTurnsTest, WhoGivesUpWhileWaitingGetsNoTurn) {
    want("a");
    want("a");
    {
        const auto given = turns.next("a");
        want("a");
    }

    endOne();

    EXPECT_EQ(began, (Strings{"a", "a", "a"}));
}

TEST_F(FetchTurnsTest, ATurnThatNobodyTookIsGivenToTheNext) {
    {
        const auto first = turns.next("a");
        const auto second = turns.next("a");
        want("a");
        EXPECT_EQ(began, Strings{});
    }
    EXPECT_EQ(began, Strings{"a"});
}

TEST_F(FetchTurnsTest, AfterTheEndNobodyGetsATurn) {
    for (int i = 0; i < 5; ++i) want("a");

    turns.close();
    endOne();
    endOne();
    want("b");

    EXPECT_EQ(began, (Strings{"a", "a"}));
}

TEST_F(FetchTurnsTest, ATurnMayOutliveThoseWhoGaveIt) {
    std::optional<FetchTurns> leaving{std::in_place, FetchTurns::Limits{1, 1}};
    std::optional<Future<FetchTurns::Turn>> future{leaving->next("a")};

    leaving.reset();
    future.reset();

    SUCCEED();
}

TEST_F(FetchTurnsTest, AHundredThousandThatEndAtOnceTakeTheirTurnsWithoutDepth) {
    std::size_t ended = 0;
    const auto passing = [](FetchTurns& from, std::size_t& count) -> Task<void> {
        const auto turn = co_await from.next("a");
        ++count;
    };
    want("a");
    want("a");
    for (int i = 0; i < 100'000; ++i) wants.start(passing(turns, ended));
    EXPECT_EQ(ended, 0U);

    endOne();

    EXPECT_EQ(ended, 100'000U);
}

TEST_F(FetchTurnsTest, RandomWantsNeverPassTheLimitsAndAllGetTheirTurn) {
    std::mt19937 random{3};
    std::size_t wanted = 0;
    for (int step = 0; step < 5000; ++step) {
        if (random() % 2 == 0) {
            want(std::string(1, static_cast<char>('a' + random() % 5)));
            ++wanted;
        } else if (!running.empty()) {
            endOne();
        }
        std::map<std::string, int> hosts;
        for (const auto& each : running) ++hosts[each.first];
        EXPECT_LE(running.size(), 3U);
        for (const auto& each : hosts) EXPECT_LE(each.second, 2);
    }
    while (!running.empty()) endOne();

    EXPECT_EQ(began.size(), wanted);
}

}  // namespace
}  // namespace orvu
