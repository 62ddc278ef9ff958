#include "platform/LoadWatch.h"

#include "fakes/VirtualMainLoop.h"

#include <gtest/gtest.h>

namespace orvu {
namespace {

using namespace std::chrono_literals;

class LoadWatchTest : public testing::Test {
protected:
    VirtualMainLoop loop;
    int stops = 0;
    int changes = 0;
    LoadWatch watch{loop, {.stop = [this] { ++stops; }, .changed = [this] { ++changes; }}};
    const Url url = *Url::parse("https://a.example/");
    const Url next = *Url::parse("https://b.example/");
    const LoadFailure refused{LoadFailureCause::refused, url, std::nullopt};
};

TEST_F(LoadWatchTest, ALoadWithoutAnAnswerIsGivenUpAfterAMinute) {
    watch.asked(url);
    loop.advance(59'999ms);
    EXPECT_EQ(stops, 0);

    loop.advance(1ms);

    EXPECT_EQ(stops, 1);
    EXPECT_EQ(watch.failure(), (LoadFailure{LoadFailureCause::timedOut, url, std::nullopt}));
    EXPECT_EQ(changes, 1);
}

TEST_F(LoadWatchTest, EachAddressOnTheWayHasAMinuteOfItsOwn) {
    watch.asked(url);
    loop.advance(50s);
    watch.redirected(next);
    loop.advance(50s);
    EXPECT_EQ(stops, 0);

    loop.advance(10s);

    EXPECT_EQ(watch.failure()->url, next);
}

TEST_F(LoadWatchTest, APageThatHasBegunMayTakeItsTime) {
    watch.asked(url);
    watch.answered();

    loop.advance(1h);

    EXPECT_EQ(stops, 0);
    EXPECT_FALSE(watch.failure());
}

TEST_F(LoadWatchTest, AFailureIsSaidUntilTheNextLoadBegins) {
    watch.asked(url);
    watch.failed(refused);
    EXPECT_EQ(watch.failure(), refused);

    watch.asked(next);

    EXPECT_FALSE(watch.failure());
    EXPECT_EQ(changes, 2);
}

TEST_F(LoadWatchTest, AFailedLoadIsNotGivenUpAsWell) {
    watch.asked(url);
    watch.failed(refused);

    loop.advance(1h);

    EXPECT_EQ(stops, 0);
    EXPECT_EQ(watch.failure(), refused);
}

TEST_F(LoadWatchTest, AFailureWithoutAReasonBehindTwentyRedirectsIsThatOfTheRedirects) {
    const LoadFailure unknown{LoadFailureCause::other, url, std::nullopt};
    watch.asked(url);
    for (int i = 0; i < 19; ++i) watch.redirected(url);
    watch.failed(unknown);
    EXPECT_EQ(watch.failure()->cause, LoadFailureCause::other);

    watch.dismiss();
    watch.asked(url);
    for (int i = 0; i < 20; ++i) watch.redirected(url);
    watch.failed(unknown);
    EXPECT_EQ(watch.failure()->cause, LoadFailureCause::tooManyRedirects);

    watch.dismiss();
    watch.asked(url);
    for (int i = 0; i < 20; ++i) watch.redirected(url);
    watch.failed(refused);
    EXPECT_EQ(watch.failure()->cause, LoadFailureCause::refused);
}

TEST_F(LoadWatchTest, OfAPageThatFailsWithoutEndTheNewestIsSaidOnceInASecond) {
    const LoadFailure other{LoadFailureCause::otherProgram, next, std::nullopt};
    watch.failed(refused);
    EXPECT_EQ(watch.failure(), refused);

    loop.advance(400ms);
    watch.failed({LoadFailureCause::otherProgram, url, std::nullopt});
    loop.advance(400ms);
    watch.failed(other);
    EXPECT_EQ(watch.failure(), refused);
    loop.advance(201ms);
    EXPECT_EQ(watch.failure(), other);
    EXPECT_EQ(changes, 2);

    for (int i = 0; i < 10'000; ++i) {
        watch.failed(i % 2 == 0 ? refused : other);
        loop.advance(1ms);
    }
    EXPECT_LE(changes, 13);
}

TEST_F(LoadWatchTest, AnOlderFailureIsNotSaidAfterANewerOne) {
    const LoadFailure newest{LoadFailureCause::timedOut, next, std::nullopt};
    watch.failed(refused);
    watch.failed({LoadFailureCause::otherProgram, next, std::nullopt});
    loop.advance(1s);

    watch.failed(newest);
    loop.advance(1h);

    EXPECT_EQ(watch.failure(), newest);
}

TEST_F(LoadWatchTest, WhatThePersonAsksForIsSaidAtOnce) {
    watch.failed(refused);

    watch.dismiss();
    watch.asked(url);
    watch.failed(refused);

    EXPECT_EQ(watch.failure(), refused);
}

TEST_F(LoadWatchTest, WhatWasToBeSaidLaterIsForgottenWithTheNextLoad) {
    watch.failed(refused);
    watch.failed({LoadFailureCause::otherProgram, next, std::nullopt});

    watch.asked(next);
    watch.answered();
    loop.advance(1h);

    EXPECT_FALSE(watch.failure());
}

TEST_F(LoadWatchTest, TheSameFailureAgainIsNoChange) {
    watch.failed(refused);
    watch.failed(refused);
    EXPECT_EQ(changes, 1);

    watch.dismiss();
    watch.dismiss();

    EXPECT_FALSE(watch.failure());
    EXPECT_EQ(changes, 2);
}

}  // namespace
}  // namespace orvu
