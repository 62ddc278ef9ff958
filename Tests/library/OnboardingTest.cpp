#include "library/onboarding/Onboarding.h"

#include "fakes/FakeImportWindow.h"
#include "look/text/PlatformText.h"
#include "support/StoreWorld.h"

namespace orvu {
namespace {

using Mark = OnboardingView::Mark;
using Marks = std::array<Mark, 3>;

class OnboardingTest : public testing::Test {
protected:
    [[nodiscard]] std::unique_ptr<OnboardingView> begin() {
        const auto makeDefault = [this] {
            ++madeDefault;
            return said;
        };
        return onboarding.begin(makeDefault, [this] { ++closed; });
    }
    [[nodiscard]] bool isStored() { return Settings{world.defaults}.onboarded.get(); }

    StoreWorld world;
    FakeImportWindow import;
    Onboarding onboarding{world.services.settings(), import};
    int madeDefault = 0;
    std::string said;  ///< by becoming the default browser
    int closed = 0;
};

TEST_F(OnboardingTest, BeginsWithTheWelcome) {
    const auto view = begin();

    ASSERT_TRUE(view);
    EXPECT_EQ(view->step.get(), OnboardingView::welcome);
    EXPECT_EQ(view->shown().heading, "orvu");
    EXPECT_FALSE(view->hasBack());
    EXPECT_EQ(view->mainTitle(), "Continue");
    EXPECT_EQ(view->message.get(), std::nullopt);
}

TEST_F(OnboardingTest, TheMainButtonGoesOnAndEndsInTheLastStep) {
    const auto view = begin();

    view->advance();
    EXPECT_EQ(view->step.get(), OnboardingView::importer);
    EXPECT_EQ(view->shown().heading, "Bring your web with you");
    EXPECT_EQ(view->mainTitle(), "Continue");
    view->advance();
    EXPECT_EQ(view->shown().heading, "Make Orvu your browser");
    EXPECT_EQ(view->mainTitle(), "Start browsing");
    EXPECT_EQ(closed, 0);
    EXPECT_FALSE(isStored());

    view->advance();

    EXPECT_EQ(view->step.get(), OnboardingView::finish);
    EXPECT_EQ(closed, 1);
    EXPECT_TRUE(isStored());
}

TEST_F(OnboardingTest, BackGoesToTheStepBeforeAndNotBeyondTheFirst) {
    const auto view = begin();
    view->advance();
    view->advance();

    view->back();
    EXPECT_EQ(view->step.get(), OnboardingView::importer);
    EXPECT_TRUE(view->hasBack());
    view->back();
    view->back();
    EXPECT_EQ(view->step.get(), OnboardingView::welcome);
}

TEST_F(OnboardingTest, AMessageStaysOnTheWayBackAndGoesOnTheWayOn) {
    const auto view = begin();
    view->advance();
    view->advance();
    view->message.set("Orvu is the default browser.");

    view->back();
    EXPECT_EQ(view->message.get(), "Orvu is the default browser.");
    view->advance();
    EXPECT_EQ(view->message.get(), std::nullopt);
}

TEST_F(OnboardingTest, TheMarksTellHowFarThePersonIs) {
    const auto view = begin();

    EXPECT_EQ(view->marks(), (Marks{Mark{26, true}, Mark{6, false}, Mark{6, false}}));
    view->advance();
    EXPECT_EQ(view->marks(), (Marks{Mark{6, true}, Mark{26, true}, Mark{6, false}}));
    view->advance();
    EXPECT_EQ(view->marks(), (Marks{Mark{6, true}, Mark{6, true}, Mark{26, true}}));
    EXPECT_EQ(Mark::height, 6);
    EXPECT_EQ(Mark::later, (Paint{Desk::white, 0.2}));
}

TEST_F(OnboardingTest, TheButtonOfAStepImportsIntoThePersonalProfileOrMakesTheDefaultBrowser) {
    const auto view = begin();
    view->press();
    EXPECT_TRUE(import.shown.empty());

    view->advance();
    view->press();
    EXPECT_EQ(import.shown, std::vector<std::optional<Profile>>{std::nullopt});
    EXPECT_EQ(madeDefault, 0);

    view->advance();
    view->press();
    EXPECT_EQ(import.shown.size(), 1U);
    EXPECT_EQ(madeDefault, 1);
    EXPECT_EQ(closed, 0);
}

TEST_F(OnboardingTest, BecomingTheDefaultBrowserSaysWhatCameOfItBelowItsButton) {
    const auto view = begin();
    view->step.set(OnboardingView::finish);
    view->press();
    EXPECT_EQ(view->message.get(), std::nullopt);
    said = "It is.";

    view->press();

    EXPECT_EQ(view->message.get(), "It is.");
}

TEST_F(OnboardingTest, WhatIsImportedMayGoOnWhileThePersonGoesOn) {
    const auto view = begin();
    view->advance();
    view->press();

    view->advance();
    view->advance();

    EXPECT_EQ(import.shown.size(), 1U);
    EXPECT_TRUE(isStored());
}

TEST_F(OnboardingTest, AFirstRunThatWasFinishedDoesNotComeAgain) {
    auto view = begin();
    for (int i = 0; i < 3; ++i) view->advance();

    EXPECT_FALSE(onboarding.isNeeded());
    EXPECT_EQ(begin(), nullptr);
}

TEST_F(OnboardingTest, AWindowThatIsClosedInTheSecondStepComesAgainFromTheFirst) {
    auto view = begin();
    view->advance();
    view.reset();

    EXPECT_FALSE(isStored());
    view = begin();
    ASSERT_TRUE(view);
    EXPECT_EQ(view->step.get(), OnboardingView::welcome);
}

TEST_F(OnboardingTest, ClosingMayEndTheView) {
    std::unique_ptr<OnboardingView> view;
    view = onboarding.begin([] { return std::string{}; }, [&] { view.reset(); });
    view->step.set(OnboardingView::finish);

    view->advance();

    EXPECT_EQ(view, nullptr);
    EXPECT_TRUE(isStored());
}

TEST_F(OnboardingTest, NoTextNamesAnotherSystem) {
    for (const auto& texts : OnboardingView::texts) {
        for (const auto text :
             {texts.heading, texts.line, texts.text, texts.button, texts.caption}) {
            const std::string shown = platformText(text);
            for (const auto* word : {"Mac", "Safari", "Arc", "Dia", "Messages"}) {
                EXPECT_EQ(shown.find(word), std::string::npos) << shown;
            }
        }
    }
}

TEST_F(OnboardingTest, TheWelcomeSaysWhatTheProgramIs) {
    EXPECT_EQ(platformText(begin()->shown().text),
              "A desktop browser where the address hangs from the top edge, and Kesto answers "
              "questions about the page on your computer.");
}

}  // namespace
}  // namespace orvu
