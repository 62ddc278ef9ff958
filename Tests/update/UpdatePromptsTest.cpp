#include "look/text/PlatformText.h"
#include "support/UpdateWorld.h"
#include "update/UpdateAsk.h"
#include "update/UpdatePill.h"

#include <gtest/gtest.h>

namespace orvu {
namespace {

using State = Updater::State;
using Kind = State::Kind;
using Look = UpdatePill::Look;
using Action = UpdatePill::Action;
using Window = UpdateAsk::Window;
using std::chrono::milliseconds;
using std::chrono::seconds;

class UpdateAskTest : public testing::Test, protected UpdateWorld {
protected:
    void begin(std::int64_t launches, Window window = Window::ordinary) {
        settings.launchCount.set(launches);
        ask.begin(window);
    }

    Observable<bool> isShown{false};
    UpdateAsk ask{loop, settings, updater, isShown};
};

TEST_F(UpdateAskTest, TheQuestionComesFourSecondsAfterTheWindow) {
    begin(2);
    loop.advance(milliseconds{3999});
    EXPECT_FALSE(isShown.get());

    loop.advance(milliseconds{1});

    EXPECT_TRUE(isShown.get());
}

TEST_F(UpdateAskTest, NobodyIsAskedInTheFirstLaunch) {
    begin(1);
    loop.advance(seconds{60});

    EXPECT_FALSE(isShown.get());
}

TEST_F(UpdateAskTest, APrivateWindowDoesntAsk) {
    begin(5, Window::isPrivate);
    loop.advance(seconds{60});

    EXPECT_FALSE(isShown.get());
}

TEST_F(UpdateAskTest, WhoHasAnsweredIsNotAskedAlsoAfterTurningItOff) {
    settings.autoUpdate.set(true);
    settings.autoUpdate.set(false);

    begin(5);
    loop.advance(seconds{60});

    EXPECT_FALSE(isShown.get());
}

TEST_F(UpdateAskTest, AnAnswerGivenElsewhereWhileItWaitsCallsItOff) {
    begin(2);
    settings.autoUpdate.set(false);

    loop.advance(seconds{4});

    EXPECT_FALSE(isShown.get());
}

TEST_F(UpdateAskTest, ACopyThatTheSystemUpdatesDoesntAsk) {
    installer.supported = UpdateSupport::system;

    begin(2);
    loop.advance(seconds{60});

    EXPECT_FALSE(isShown.get());
}

TEST_F(UpdateAskTest, YesIsKeptAndLooksForAnUpdate) {
    begin(2);
    loop.advance(seconds{4});

    ask.answer(UpdateAsk::Answer::automatically);

    EXPECT_EQ(updater.automatic(), true);
    EXPECT_FALSE(isShown.get());
    EXPECT_EQ(transport.asked, std::vector<std::string>{feed});
}

TEST_F(UpdateAskTest, YesTakesAReleaseThatIsKnown) {
    check(UserInitiated::no, manifest());

    ask.answer(UpdateAsk::Answer::automatically);

    EXPECT_EQ(state(), (State{Kind::downloading, "1.2"}));
}

TEST_F(UpdateAskTest, AskMeIsKeptAndLooksForNothing) {
    begin(2);
    loop.advance(seconds{4});

    ask.answer(UpdateAsk::Answer::ask);

    EXPECT_EQ(updater.automatic(), false);
    EXPECT_FALSE(isShown.get());
    EXPECT_TRUE(transport.asked.empty());
}

TEST_F(UpdateAskTest, TwoWindowsBothAskAndTheLastAnswerCounts) {
    Observable<bool> isOtherShown{false};
    UpdateAsk other{loop, settings, updater, isOtherShown};
    begin(2);
    other.begin(Window::ordinary);
    loop.advance(seconds{4});
    ask.answer(UpdateAsk::Answer::ask);
    EXPECT_TRUE(isOtherShown.get());

    other.answer(UpdateAsk::Answer::automatically);

    EXPECT_EQ(updater.automatic(), true);
}

TEST_F(UpdateAskTest, TheTextPromisesNothingThatIsNotDoneHere) {
    EXPECT_EQ(platformText(UpdateAsk::text),
              "Orvu can fetch updates in the background and finish them the next time you "
              "restart. Every update is signed by Zarvo.");
}

class UpdatePillTest : public testing::Test, protected UpdateWorld {
protected:
    UpdatePill pill{updater};
};

TEST_F(UpdatePillTest, AnOfferIsShownToWhoHasNotDecidedOrWantsToBeAsked) {
    const Look offer{.kind = Look::Kind::capsule,
                     .symbol = "arrow.down.circle",
                     .label = "Update",
                     .help = "Download Orvu 1.2"};
    check(UserInitiated::no, manifest());
    EXPECT_EQ(pill.look(), offer);
    EXPECT_EQ(pill.action(), Action::download);

    settings.autoUpdate.set(false);

    EXPECT_EQ(pill.look(), offer);
}

TEST_F(UpdatePillTest, AnOfferIsNotShownWhereItIsFetchedByItself) {
    settings.autoUpdate.set(true);
    updater.state.set({Kind::available, "1.2"});

    EXPECT_EQ(pill.look(), Look{});
    EXPECT_EQ(pill.action(), Action::none);
}

TEST_F(UpdatePillTest, ADownloadIsAWheel) {
    updater.state.set({Kind::downloading, "1.2"});

    EXPECT_EQ(pill.look(), (Look{.kind = Look::Kind::wheel, .help = "Downloading the update…"}));
    EXPECT_EQ(pill.action(), Action::none);
}

TEST_F(UpdatePillTest, AnUpdateThatIsReadyPulses) {
    updater.state.set({Kind::ready, "1.2"});

    EXPECT_EQ(pill.look(), (Look{.kind = Look::Kind::capsule,
                                 .symbol = "arrow.up.circle.fill",
                                 .label = "Restart to update",
                                 .help = "Orvu 1.2 is ready",
                                 .pulses = true}));
    EXPECT_EQ(pill.action(), Action::restart);
}

TEST_F(UpdatePillTest, OtherStatesShowNothing) {
    for (const Kind kind : {Kind::idle, Kind::checking, Kind::upToDate, Kind::failed}) {
        updater.state.set({kind, "text"});

        EXPECT_EQ(pill.look(), Look{});
        EXPECT_EQ(pill.action(), Action::none);
    }
}

TEST_F(UpdatePillTest, AVersionThatIsNoLineIsShownAsOne) {
    updater.state.set({Kind::ready, "1.2\n" + std::string(100, 'x')});

    EXPECT_EQ(pill.look().help, "Orvu 1.2 " + std::string(36, 'x') + "… is ready");
}

}  // namespace
}  // namespace orvu
