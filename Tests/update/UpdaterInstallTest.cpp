#include "support/UpdateWorld.h"
#include "update/SignedText.h"

#include <gtest/gtest.h>

namespace orvu {
namespace {

using State = Updater::State;
using Kind = State::Kind;
using Calls = std::vector<std::string>;

constexpr auto whatsNewKey = SettingsKeys::showWhatsNewFor.name;

class UpdaterInstallTest : public testing::Test, protected UpdateWorld {};

TEST_F(UpdaterInstallTest, WithoutAReleaseNothingIsFetched) {
    updater.download();

    EXPECT_EQ(state(), State{});
    EXPECT_TRUE(installer.calls.empty());
}

TEST_F(UpdaterInstallTest, TheStepsComeInOrder) {
    check(UserInitiated::no, manifest());

    updater.download();
    EXPECT_EQ(installer.calls, Calls{"prepare"});
    EXPECT_EQ(transport.open.front().place, "archive");
    answer(archive, "");
    EXPECT_EQ(installer.calls, (Calls{"prepare", "digest"}));
    EXPECT_EQ(state(), (State{Kind::downloading, "1.2"}));
    answer(signedText, "signed");

    EXPECT_EQ(installer.calls, (Calls{"prepare", "digest", "stage"}));
    EXPECT_EQ(transport.asked, (Calls{feed, archive, signedText}));
    EXPECT_EQ(state(), (State{Kind::ready, "1.2"}));
}

TEST_F(UpdaterInstallTest, TheInstallerIsToldWhatTheUpdateHasToBe) {
    installer.takenBackBuild = 11;

    makeReady();

    EXPECT_EQ(installer.expected.version, "1.2");
    EXPECT_EQ(installer.expected.build, 12);
    EXPECT_EQ(installer.expected.newerThan, 11);
    EXPECT_EQ(installer.expected.signedText, "signed");
}

TEST_F(UpdaterInstallTest, BothFilesHaveASizeLimit) {
    check(UserInitiated::yes, manifest());
    EXPECT_EQ(transport.open.front().limits.bytes, SignedText::largestArchive);
    answer(archive, "");

    EXPECT_EQ(transport.open.front().limits.bytes, SignedText::longest + 256);
}

TEST_F(UpdaterInstallTest, HowFarTheArchiveHasComeIsTold) {
    check(UserInitiated::yes, manifest());

    transport.open.front().progress(4096);

    EXPECT_EQ(updater.received.get(), 4096U);
}

TEST_F(UpdaterInstallTest, AHashInUpperCaseMatches) {
    check(UserInitiated::yes, manifest("12", archive, "ABCD"));
    answer(archive, "");
    answer(signedText, "signed");

    EXPECT_EQ(kind(), Kind::ready);
}

TEST_F(UpdaterInstallTest, AnotherHashIsRefusedBeforeAnythingElseIsLookedAt) {
    check(UserInitiated::yes, manifest("12", archive, "abce"));
    answer(archive, "");

    EXPECT_EQ(state(),
              (State{Kind::failed, "The download didn't match what updates.example published."}));
    EXPECT_EQ(installer.calls, (Calls{"prepare", "digest", "discard"}));
}

TEST_F(UpdaterInstallTest, AnArchiveThatCantBeReadDoesntMatchAnEmptyHash) {
    installer.archiveDigest = "";

    check(UserInitiated::yes, manifest("12", archive, ""));
    answer(archive, "");

    EXPECT_EQ(kind(), Kind::failed);
}

TEST_F(UpdaterInstallTest, AFolderThatCantBeWrittenIsToldWithoutADownload) {
    installer.place = std::nullopt;

    check(UserInitiated::yes, manifest());

    EXPECT_EQ(state(), (State{Kind::failed, "The update couldn't be unpacked."}));
    EXPECT_EQ(transport.asked, Calls{feed});
}

TEST_F(UpdaterInstallTest, ADownloadThatFailsIsToldWithTheReason) {
    check(UserInitiated::yes, manifest());
    fail(archive);

    EXPECT_EQ(state(), (State{Kind::failed, "The update couldn't be downloaded. No route."}));
    EXPECT_EQ(installer.calls, (Calls{"prepare", "discard"}));
}

TEST_F(UpdaterInstallTest, ASignedTextThatDoesntComeIsADownloadThatFails) {
    check(UserInitiated::yes, manifest());
    answer(archive, "");
    fail(signedText);

    EXPECT_EQ(state(), (State{Kind::failed, "The update couldn't be downloaded. No route."}));
    EXPECT_EQ(installer.calls, (Calls{"prepare", "digest", "discard"}));
}

TEST_F(UpdaterInstallTest, WhatTheInstallerRefusesIsToldInItsWords) {
    installer.staged = {.failure = "The update isn't a valid app."};

    makeReady();

    EXPECT_EQ(state(), (State{Kind::failed, "The update isn't a valid app."}));
    EXPECT_EQ(installer.calls, (Calls{"prepare", "digest", "stage", "discard"}));
}

TEST_F(UpdaterInstallTest, AFailureStaysUntilTheNextCheck) {
    check(UserInitiated::yes, manifest());
    fail(archive);

    updater.check(UserInitiated::no);
    EXPECT_EQ(kind(), Kind::checking);
    answer(feed, manifest());

    EXPECT_EQ(state(), (State{Kind::available, "1.2"}));
}

TEST_F(UpdaterInstallTest, ADownloadUnderWayIsNotBegunAgain) {
    check(UserInitiated::yes, manifest());

    updater.download();

    EXPECT_EQ(installer.calls, Calls{"prepare"});
}

TEST_F(UpdaterInstallTest, ARestartLaunchesTheSwapThenQuits) {
    makeReady();
    Calls atQuit;
    updater.connectQuit([&] {
        atQuit = installer.calls;
        atQuit.push_back(settings.showWhatsNewFor.get());
    });

    updater.installAndRestart();

    EXPECT_EQ(atQuit, (Calls{"prepare", "digest", "stage", "swap and start", "1.2"}));
}

TEST_F(UpdaterInstallTest, ARestartInAnotherStateDoesNothing) {
    makeReady();
    updater.state.set({Kind::available, "1.2"});
    bool hasQuit = false;
    updater.connectQuit([&] { hasQuit = true; });

    updater.installAndRestart();

    EXPECT_FALSE(hasQuit);
    EXPECT_EQ(installer.calls.back(), "stage");
    EXPECT_FALSE(settings.showWhatsNewFor.isSet());
}

TEST_F(UpdaterInstallTest, ARestartThatCantBeLaunchedIsToldAndNotTriedAgain) {
    makeReady();
    installer.launchFailure = "No such file.";
    bool hasQuit = false;
    updater.connectQuit([&] { hasQuit = true; });

    updater.installAndRestart();
    EXPECT_EQ(state(), (State{Kind::failed, "Orvu couldn't restart to update. No such file."}));
    updater.installAndRestart();

    EXPECT_FALSE(hasQuit);
    EXPECT_EQ(std::ranges::count(installer.calls, "swap and start"), 1);
}

TEST_F(UpdaterInstallTest, AQuitInstallsForWhoWantsAutomaticUpdates) {
    settings.autoUpdate.set(true);
    makeReady();

    updater.installOnQuitIfReady();

    EXPECT_EQ(installer.calls.back(), "swap");
    EXPECT_EQ(settings.showWhatsNewFor.get(), "1.2");
}

TEST_F(UpdaterInstallTest, AQuitLeavesTheCopyOfWhoWantsToBeAskedOrHasntDecided) {
    for (const bool isDecided : {false, true}) {
        UpdateWorld world;
        if (isDecided) world.settings.autoUpdate.set(false);
        world.makeReady();

        world.updater.installOnQuitIfReady();

        EXPECT_EQ(world.installer.calls.back(), "stage");
        EXPECT_FALSE(world.settings.showWhatsNewFor.isSet());
    }
}

TEST_F(UpdaterInstallTest, AQuitWithoutAnUpdateInstallsNothing) {
    settings.autoUpdate.set(true);

    updater.installOnQuitIfReady();

    EXPECT_TRUE(installer.calls.empty());
}

TEST_F(UpdaterInstallTest, AQuitAfterARestartDoesntInstallTwice) {
    settings.autoUpdate.set(true);
    makeReady();
    updater.installAndRestart();

    updater.installOnQuitIfReady();

    EXPECT_EQ(installer.calls.back(), "swap and start");
}

TEST_F(UpdaterInstallTest, AQuitThatCantLaunchTheSwapSaysNothing) {
    settings.autoUpdate.set(true);
    makeReady();
    installer.launchFailure = "No such file.";

    updater.installOnQuitIfReady();

    EXPECT_EQ(kind(), Kind::ready);
}

TEST_F(UpdaterInstallTest, ReleaseNotesAreDueOnceAfterTheirVersionCame) {
    settings.showWhatsNewFor.set("1.0");

    EXPECT_TRUE(updater.takeWhatsNewToShow());
    EXPECT_FALSE(defaults.hasObject(whatsNewKey));
    EXPECT_FALSE(updater.takeWhatsNewToShow());
}

TEST_F(UpdaterInstallTest, ReleaseNotesWaitForTheirVersion) {
    settings.showWhatsNewFor.set("0.9");

    EXPECT_FALSE(updater.takeWhatsNewToShow());
    EXPECT_EQ(settings.showWhatsNewFor.get(), "0.9");
}

TEST_F(UpdaterInstallTest, WithoutAnUpdateNoReleaseNotesAreDue) {
    EXPECT_FALSE(updater.takeWhatsNewToShow());
    EXPECT_TRUE(defaults.removed.empty());
}

TEST_F(UpdaterInstallTest, AWindowThatIsShownKeepsTheCopy) {
    updater.didShowWindow();

    EXPECT_EQ(installer.calls, Calls{"confirm"});
}

}  // namespace
}  // namespace orvu
