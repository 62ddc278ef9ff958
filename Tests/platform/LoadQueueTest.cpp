#include "platform/LoadQueue.h"

#include "fakes/VirtualMainLoop.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <vector>

namespace orvu {
namespace {

using namespace std::chrono_literals;

class LoadQueueTest : public testing::Test {
protected:
    using Place = std::unique_ptr<LoadQueue::Place>;

    /// Adds a load of that number, which waits for the turn of the same.
    void wait(std::size_t number) { waitFor(number, number); }
    void waitFor(std::size_t number, std::size_t turn) {
        places[number] = queue.wait(turn, [this, number] { started.push_back(number); });
    }
    void end(std::size_t number) { places.erase(number); }
    void runIdle() {
        while (loop.runIdle()) {
        }
    }
    void advance(std::chrono::milliseconds time) {
        loop.advance(time);
        runIdle();
    }

    VirtualMainLoop loop;
    Activity activity;
    LoadQueue queue{loop, activity};
    std::vector<std::size_t> started;
    std::map<std::size_t, Place> places;
};

using Numbers = std::vector<std::size_t>;

TEST_F(LoadQueueTest, NothingBeginsWithinTheCallThatAddsIt) {
    wait(1);
    EXPECT_EQ(started, Numbers{});

    runIdle();
    EXPECT_EQ(started, Numbers{1});
}

TEST_F(LoadQueueTest, TwoLoadAtATimeAndTheNextWhenOneEnds) {
    for (std::size_t number = 1; number <= 4; ++number) wait(number);
    runIdle();
    EXPECT_EQ(started, (Numbers{1, 2}));

    end(2);
    runIdle();
    EXPECT_EQ(started, (Numbers{1, 2, 3}));
    end(1);
    end(3);
    runIdle();
    EXPECT_EQ(started, (Numbers{1, 2, 3, 4}));
}

TEST_F(LoadQueueTest, EachBeginsInATurnOfTheLoopOfItsOwn) {
    wait(1);
    wait(2);

    EXPECT_TRUE(loop.runIdle());

    EXPECT_EQ(started, Numbers{1});
}

TEST_F(LoadQueueTest, TheLowestTurnGoesFirstAndOfEqualOnesTheFirstThatCame) {
    waitFor(1, 5);
    waitFor(2, 3);
    waitFor(3, 3);
    waitFor(4, 0);

    for (int i = 0; i < 4; ++i) {
        runIdle();
        for (const auto number : Numbers{started}) end(number);
    }

    EXPECT_EQ(started, (Numbers{4, 2, 3, 1}));
}

TEST_F(LoadQueueTest, AllWaitUntilTheFrontPageWasPainted) {
    wait(1);
    Place front = queue.goFirst();
    EXPECT_TRUE(front->holdsUp());
    advance(1900ms);
    EXPECT_EQ(started, Numbers{});

    front.reset();
    runIdle();

    EXPECT_EQ(started, Numbers{1});
}

TEST_F(LoadQueueTest, TheyWaitForTwoSecondsAtMost) {
    Place front = queue.goFirst();
    wait(1);
    advance(1999ms);
    EXPECT_EQ(started, Numbers{});

    advance(1ms);

    EXPECT_EQ(started, Numbers{1});
    EXPECT_FALSE(front->holdsUp());
}

TEST_F(LoadQueueTest, APageThatIsWantedLaterHoldsTheOthersUpAsWell) {
    wait(1);
    wait(2);
    wait(3);
    runIdle();

    Place front = queue.goFirst();
    end(1);
    advance(1s);
    EXPECT_EQ(started, (Numbers{1, 2}));
    front.reset();
    runIdle();

    EXPECT_EQ(started, (Numbers{1, 2, 3}));
}

TEST_F(LoadQueueTest, NoneBeginsWithinHalfASecondOfAPress) {
    activity.pressed(loop.now());
    wait(1);
    advance(400ms);
    activity.pressed(loop.now());
    advance(499ms);
    EXPECT_EQ(started, Numbers{});

    advance(1ms);

    EXPECT_EQ(started, Numbers{1});
}

TEST_F(LoadQueueTest, APressBeforeTheIdleTurnIsHeeded) {
    wait(1);
    activity.pressed(loop.now());
    runIdle();
    EXPECT_EQ(started, Numbers{});

    advance(500ms);

    EXPECT_EQ(started, Numbers{1});
}

TEST_F(LoadQueueTest, NoneBeginsWhileSomethingMoves) {
    activity.setMoving(true);
    wait(1);
    advance(1h);
    EXPECT_EQ(started, Numbers{});

    activity.setMoving(false);
    runIdle();

    EXPECT_EQ(started, Numbers{1});
}

TEST_F(LoadQueueTest, AMotionBeforeTheIdleTurnIsHeeded) {
    wait(1);
    activity.setMoving(true);
    runIdle();

    EXPECT_EQ(started, Numbers{});
}

TEST_F(LoadQueueTest, OneThatIsWantedAtOnceLeavesItsTurn) {
    wait(1);
    wait(2);
    places[1] = queue.goFirst();

    advance(1h);

    EXPECT_EQ(started, Numbers{2});
}

TEST_F(LoadQueueTest, PagesThatNeverEndDoNotKeepTheOthersWaitingForEver) {
    for (std::size_t number = 1; number <= 5; ++number) wait(number);
    runIdle();
    advance(9'999ms);
    EXPECT_EQ(started, (Numbers{1, 2}));

    advance(1ms);
    EXPECT_EQ(started, (Numbers{1, 2, 3, 4}));
    advance(10s);
    EXPECT_EQ(started, (Numbers{1, 2, 3, 4, 5}));
}

TEST_F(LoadQueueTest, OneThatEndsWithinItsOwnBeginningMakesRoom) {
    places[1] = queue.wait(1, [this] {
        started.push_back(1);
        end(1);
    });
    wait(2);
    wait(3);
    runIdle();

    EXPECT_EQ(started, (Numbers{1, 2, 3}));
}

TEST_F(LoadQueueTest, AClockThatWasSetBackHoldsNothingUp) {
    activity.pressed(loop.now());
    const Place front = queue.goFirst();
    loop.setNow(loop.now().after(-24h));

    wait(1);
    runIdle();

    EXPECT_EQ(started, Numbers{1});
}

TEST_F(LoadQueueTest, WhateverHappensNoMoreThanTwoBeginWithinTheirTimeAndAllBeginInTheEnd) {
    std::mt19937 random{11};
    for (int round = 0; round < 100; ++round) {
        started.clear();
        constexpr std::size_t count = 20;
        for (std::size_t number = 1; number <= count; ++number) {
            waitFor(number, random() % 4);
        }
        Place front;
        for (int step = 0; step < 400; ++step) {
            const auto before = started.size();
            switch (random() % 6) {
                case 0:
                    activity.pressed(loop.now());
                    break;
                case 1:
                    activity.setMoving(!activity.isMoving());
                    break;
                case 2:
                    front = queue.goFirst();
                    break;
                case 3:
                    front.reset();
                    break;
                default:
                    if (!started.empty()) end(started[random() % started.size()]);
            }
            runIdle();
            EXPECT_FALSE(started.size() > before && activity.isMoving());
            loop.advance(std::chrono::milliseconds{random() % 700});
        }
        activity.setMoving(false);
        front.reset();
        for (std::size_t i = 0; i < count; ++i) {
            advance(11s);
            for (const auto number : Numbers{started}) end(number);
        }
        EXPECT_EQ(started.size(), count);
        places.clear();
    }
}

}  // namespace
}  // namespace orvu
