#include "update/UpdateStatus.h"

#include "support/UpdateWorld.h"

#include <gtest/gtest.h>

namespace orvu {
namespace {

using State = Updater::State;
using Kind = State::Kind;

class UpdateStatusTest : public testing::Test, protected UpdateWorld {
protected:
    int restarts = 0;
    UpdateStatus status{updater, [this] { ++restarts; }};
};

TEST_F(UpdateStatusTest, EachStateHasItsLine) {
    const std::vector<std::pair<State, std::string>> lines{
        {{Kind::idle}, "Orvu checks for updates on its own."},
        {{Kind::checking}, "…"},
        {{Kind::upToDate}, "Orvu is up to date."},
        {{Kind::available, "1.2"}, "Orvu 1.2 is available."},
        {{Kind::downloading, "1.2"}, "Downloading Orvu 1.2…"},
        {{Kind::ready, "1.2"}, "Orvu 1.2 is ready. Restart to finish."},
        {{Kind::failed, "No."}, "No."}};
    for (const auto& [state, line] : lines) {
        updater.state.set(state);
        EXPECT_EQ(status.line(), line);
    }
}

TEST_F(UpdateStatusTest, ItNamesTheRunningVersion) { EXPECT_EQ(status.title(), "Orvu 1.0"); }

TEST_F(UpdateStatusTest, ACheckIsDisabledWhileOneRunsAndOnlyThen) {
    for (const Kind kind : {Kind::idle, Kind::upToDate, Kind::available, Kind::downloading,
                            Kind::ready, Kind::failed}) {
        updater.state.set({kind, "1.2"});
        EXPECT_TRUE(status.isEnabled());
    }
    updater.state.set({Kind::checking});
    EXPECT_FALSE(status.isEnabled());
}

TEST_F(UpdateStatusTest, TheButtonChecksUntilAnUpdateIsReady) {
    EXPECT_EQ(status.buttonTitle(), "Check Now");
    status.press();
    EXPECT_EQ(kind(), Kind::checking);
    answer(feed, manifest());
    answer(archive, "");
    answer(signedText, "signed");
    EXPECT_EQ(status.buttonTitle(), "Restart to Update");
    EXPECT_EQ(restarts, 0);

    status.press();

    EXPECT_EQ(restarts, 1);
}

TEST_F(UpdateStatusTest, ACopyOfTheSystemsSaysWhoUpdatesIt) {
    installer.supported = UpdateSupport::system;

    EXPECT_EQ(status.line(), update_words::bySystem);
    status.press();

    EXPECT_EQ(status.line(), update_words::bySystem);
    EXPECT_EQ(kind(), Kind::failed);
    EXPECT_TRUE(transport.asked.empty());
}

TEST_F(UpdateStatusTest, AVersionOfManyLinesIsShownInOne) {
    updater.state.set({Kind::available, "1.2\n" + std::string(100, 'x')});

    EXPECT_EQ(status.line().find('\n'), std::string::npos);
    EXPECT_LT(status.line().size(), 80U);
}

}  // namespace
}  // namespace orvu
