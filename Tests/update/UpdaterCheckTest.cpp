#include "support/UpdateWorld.h"

#include <gtest/gtest.h>

namespace orvu {
namespace {

using State = Updater::State;
using Kind = State::Kind;
using std::chrono::hours;
using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr const char* unreachable =
    "Couldn't reach updates.example. Check your connection and try again.";

class UpdaterCheckTest : public testing::Test, protected UpdateWorld {};

TEST_F(UpdaterCheckTest, NothingIsKnownBeforeTheFirstCheck) {
    EXPECT_EQ(state(), State{});
    EXPECT_FALSE(updater.lastChecked.get());
    EXPECT_TRUE(transport.asked.empty());
}

TEST_F(UpdaterCheckTest, TheFirstCheckComesEightSecondsAfterTheStart) {
    updater.start();
    loop.advance(milliseconds{7999});
    EXPECT_TRUE(transport.asked.empty());

    loop.advance(milliseconds{1});

    EXPECT_EQ(transport.asked, (std::vector<std::string>{feed}));
    EXPECT_EQ(kind(), Kind::checking);
}

TEST_F(UpdaterCheckTest, FurtherChecksComeEveryFourHours) {
    updater.start();
    loop.advance(seconds{9});
    fail(feed);

    loop.advance(hours{4} - seconds{10});
    EXPECT_EQ(transport.asked.size(), 1U);
    loop.advance(seconds{1});
    EXPECT_EQ(transport.asked.size(), 2U);
    loop.advance(hours{8});

    EXPECT_EQ(transport.asked.size(), 4U);
}

TEST_F(UpdaterCheckTest, TheManifestIsAskedForWithATimeLimitAndASizeLimit) {
    updater.check(UserInitiated::no);

    EXPECT_EQ(transport.open.front().limits.timeout, seconds{15});
    EXPECT_EQ(transport.open.front().limits.bytes, 65536U);
}

TEST_F(UpdaterCheckTest, AFailureIsToldToThePersonWhoAsked) {
    updater.check(UserInitiated::yes);
    fail(feed);

    EXPECT_EQ(state(), (State{Kind::failed, unreachable}));
    EXPECT_FALSE(updater.lastChecked.get());
}

TEST_F(UpdaterCheckTest, AFailureInTheBackgroundIsSilent) {
    updater.check(UserInitiated::no);
    fail(feed);

    EXPECT_EQ(state(), State{});
}

TEST_F(UpdaterCheckTest, ABackgroundFailureTakesAnEarlierFailureAway) {
    updater.check(UserInitiated::yes);
    fail(feed);
    updater.check(UserInitiated::no);
    EXPECT_EQ(kind(), Kind::checking);

    fail(feed);

    EXPECT_EQ(state(), State{});
}

TEST_F(UpdaterCheckTest, WhatIsNoManifestIsAFailure) {
    const std::vector<std::string> bodies{
        "",
        "<html>",
        "[]",
        "{}",
        R"({"version":"1.2","build":12,"url":"https://updates.example/a"})",
        R"({"version":"1.2","build":"12","url":"https://updates.example/a","sha256":"a"})",
        R"({"version":1.2,"build":12,"url":"https://updates.example/a","sha256":"a"})",
        R"({"version":"1.2","build":12.5,"url":"https://updates.example/a","sha256":"a"})",
        R"({"version":"1.2","build":12,"url":7,"sha256":"a"})",
        R"({"version":"1.2","build":12,"url":"https://updates.example/a","sha256":null})",
        std::string(70'000, ' ') + manifest(),
    };
    for (const auto& body : bodies) {
        check(UserInitiated::yes, body);

        EXPECT_EQ(state(), (State{Kind::failed, unreachable})) << body.substr(0, 80);
    }
}

TEST_F(UpdaterCheckTest, AManifestThatCanBeReadIsTheLastCheck) {
    loop.advance(seconds{5});

    check(UserInitiated::no, manifest("1"));

    EXPECT_EQ(updater.lastChecked.get(), loop.now());
}

TEST_F(UpdaterCheckTest, TheRunningBuildIsUpToDateWhateverItsVersion) {
    check(UserInitiated::yes, manifest("10"));

    EXPECT_EQ(state(), (State{Kind::upToDate}));
}

TEST_F(UpdaterCheckTest, AnOlderBuildIsUpToDate) {
    check(UserInitiated::yes, manifest("9"));

    EXPECT_EQ(kind(), Kind::upToDate);
}

TEST_F(UpdaterCheckTest, ARunningCopyWithoutANumberTakesAnyRelease) {
    const auto running = ApplicationFacts::parse("version 1.0\nbuild 12a\n");
    Updater other{
        {defaults, settings, loop, transport, installer}, UpdateServer{"updates.example"}, running};
    other.check(UserInitiated::no);

    answer(feed, manifest("1"));

    EXPECT_EQ(other.currentBuild(), 0);
    EXPECT_EQ(other.state.get(), (State{Kind::available, "1.2"}));
}

TEST_F(UpdaterCheckTest, AReleaseElsewhereIsNoRelease) {
    const std::vector<std::string> places{
        "https://other.example/orvu/12.tar.gz",
        "http://updates.example/orvu/12.tar.gz",
        "https://updates.example:8443/orvu/12.tar.gz",
        "https://updates.example:443/orvu/12.tar.gz",
        "https://UPDATES.example/orvu/12.tar.gz",
        "https://updates.example.other.example/12.tar.gz",
        "https://other.example/updates.example/12.tar.gz",
        "https://person@updates.example/orvu/12.tar.gz",
        "https://updates.example@other.example/12.tar.gz",
        "https://updates.example/orvu/12.tar.gz?who=1",
        "https://updates.example/orvu/12.tar.gz#a",
        "https://updates.example\\\\@other.example/",
        "file:///etc/passwd",
        "//updates.example/orvu/12.tar.gz",
        "12.tar.gz",
    };
    for (const auto& place : places) {
        check(UserInitiated::yes, manifest("12", place));

        EXPECT_NE(kind(), Kind::available) << place;
        EXPECT_NE(kind(), Kind::downloading) << place;
    }
    check(UserInitiated::yes, manifest("12", places.front()));
    EXPECT_EQ(state(), (State{Kind::upToDate}));
    EXPECT_EQ(transport.asked.size(), places.size() + 1);
}

TEST_F(UpdaterCheckTest, ABackgroundCheckStopsAtTheOfferUntilThePersonDecided) {
    check(UserInitiated::no, manifest());

    EXPECT_EQ(state(), (State{Kind::available, "1.2"}));
    EXPECT_EQ(transport.asked.size(), 1U);
}

TEST_F(UpdaterCheckTest, ABackgroundCheckStopsAtTheOfferWhereThePersonWantsToBeAsked) {
    settings.autoUpdate.set(false);

    check(UserInitiated::no, manifest());

    EXPECT_EQ(kind(), Kind::available);
}

TEST_F(UpdaterCheckTest, ABackgroundCheckGoesOnWhereThePersonWantsSo) {
    settings.autoUpdate.set(true);

    check(UserInitiated::no, manifest());

    EXPECT_EQ(state(), (State{Kind::downloading, "1.2"}));
}

TEST_F(UpdaterCheckTest, WhoAsksGetsTheUpdateWhateverIsDecided) {
    for (const bool isDecided : {false, true}) {
        UpdateWorld world;
        if (isDecided) world.settings.autoUpdate.set(false);

        world.check(UserInitiated::yes, manifest());

        EXPECT_EQ(world.kind(), Kind::downloading);
    }
}

TEST_F(UpdaterCheckTest, TurningAutomaticUpdatesOnTakesTheOffer) {
    check(UserInitiated::no, manifest());

    settings.autoUpdate.set(true);

    EXPECT_EQ(kind(), Kind::downloading);
}

TEST_F(UpdaterCheckTest, TurningAutomaticUpdatesOnFetchesNothingWithoutAnOffer) {
    settings.autoUpdate.set(true);

    EXPECT_TRUE(transport.asked.empty());
    EXPECT_EQ(kind(), Kind::idle);
}

TEST_F(UpdaterCheckTest, AChecksDoesntDisturbADownload) {
    check(UserInitiated::yes, manifest());

    updater.check(UserInitiated::no);
    updater.check(UserInitiated::yes);

    EXPECT_EQ(state(), (State{Kind::downloading, "1.2"}));
    EXPECT_EQ(transport.asked.size(), 2U);
}

TEST_F(UpdaterCheckTest, ACheckDoesntDisturbAnUpdateThatIsReady) {
    makeReady();

    updater.check(UserInitiated::no);
    updater.check(UserInitiated::yes);

    EXPECT_EQ(state(), (State{Kind::ready, "1.2"}));
    EXPECT_EQ(transport.asked.size(), 3U);
}

TEST_F(UpdaterCheckTest, OfTwoChecksTheLastToEndSetsTheState) {
    updater.check(UserInitiated::no);
    updater.check(UserInitiated::no);
    EXPECT_EQ(transport.open.size(), 2U);

    answer(feed, manifest());
    EXPECT_EQ(kind(), Kind::available);
    answer(feed, manifest("10"));

    EXPECT_EQ(kind(), Kind::upToDate);
}

TEST_F(UpdaterCheckTest, ACheckThatEndsLateDoesntDisturbADownload) {
    updater.check(UserInitiated::yes);
    updater.check(UserInitiated::no);
    answer(feed, manifest());

    answer(feed, manifest("10"));

    EXPECT_EQ(state(), (State{Kind::downloading, "1.2"}));
}

TEST_F(UpdaterCheckTest, ABuildThatWasTakenBackIsNotOfferedAgain) {
    installer.takenBackBuild = 12;

    check(UserInitiated::yes, manifest("12"));
    EXPECT_EQ(kind(), Kind::upToDate);
    check(UserInitiated::yes, manifest("11"));
    EXPECT_EQ(kind(), Kind::upToDate);
    check(UserInitiated::yes, manifest("13"));

    EXPECT_EQ(kind(), Kind::downloading);
}

TEST_F(UpdaterCheckTest, ACopyThatTheSystemUpdatesAsksNobody) {
    installer.supported = UpdateSupport::system;

    updater.start();
    loop.advance(hours{24});
    updater.check(UserInitiated::no);

    EXPECT_TRUE(transport.asked.empty());
    EXPECT_EQ(loop.pendingTimers(), 0U);
    EXPECT_EQ(state(), State{});
}

TEST_F(UpdaterCheckTest, ACopyThatTheSystemUpdatesSaysSoToWhoAsks) {
    installer.supported = UpdateSupport::system;

    updater.check(UserInitiated::yes);

    EXPECT_EQ(state(), (State{Kind::failed,
                              "Updates of Orvu come with the system's; ask the administrator of "
                              "this computer."}));
    EXPECT_TRUE(transport.asked.empty());
}

TEST_F(UpdaterCheckTest, ACopyWithoutAServerAsksNobody) {
    Updater other{{defaults, settings, loop, transport, installer}, UpdateServer{""}, {}};

    other.start();
    other.check(UserInitiated::yes);
    loop.advance(hours{24});

    EXPECT_EQ(other.state.get().kind, Kind::failed);
    EXPECT_FALSE(other.updatesItself());
    EXPECT_TRUE(transport.asked.empty());
}

TEST_F(UpdaterCheckTest, AnUpdaterThatGoesEndsItsRequests) {
    {
        Updater other{
            {defaults, settings, loop, transport, installer}, UpdateServer{"updates.example"}, {}};
        other.start();
        other.check(UserInitiated::yes);
    }

    EXPECT_FALSE(transport.open.front().promise.isWanted());
    EXPECT_EQ(loop.pendingTimers(), 0U);
}

TEST_F(UpdaterCheckTest, TheAddressesAreThoseOfTheServer) {
    EXPECT_EQ(updater.server().feed().absoluteString(), feed);
    EXPECT_EQ(updater.server().whatsNew().absoluteString(),
              "https://updates.example/orvu/whats-new/");
}

}  // namespace
}  // namespace orvu
