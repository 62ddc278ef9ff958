#include "pagetools/BrowserFindBar.h"

#include "fakes/FakeWebEngine.h"

#include <gtest/gtest.h>

#include <memory>

namespace orvu {
namespace {

class BrowserFindBarTest : public testing::Test {
protected:
    using Search = FakeWebView::Search;
    static constexpr FindConfiguration forwards{.backwards = false, .wraps = true};
    static constexpr FindConfiguration backwards{.backwards = true, .wraps = true};

    [[nodiscard]] BrowserFindBar::Search searchInFront() {
        return [this](const std::string& text, FindConfiguration how) {
            return front ? std::optional{front->find(text, how)} : std::nullopt;
        };
    }
    void answer(bool found) { page.findAnswers.back().resolve(found); }

    std::vector<FakeWebView*> live;
    FakeWebView page{live};
    FakeWebView otherPage{live};
    WebView* front = &page;
    BrowserFindBar bar{searchInFront()};
};

TEST_F(BrowserFindBarTest, BeginsEmptyAndWithNothingToSay) {
    EXPECT_EQ(bar.text(), "");
    EXPECT_FALSE(bar.found());
    EXPECT_EQ(bar.status(), "");
    EXPECT_TRUE(page.searches.empty());
}

TEST_F(BrowserFindBarTest, EachChangeOfTheTextSearchesForwards) {
    bar.setText("a");
    bar.setText("ab");
    bar.setText("ab");

    EXPECT_EQ(page.searches, (std::vector{Search{"a", forwards}, Search{"ab", forwards}}));
}

TEST_F(BrowserFindBarTest, TheButtonsSearchForTheSameTextInBothDirections) {
    bar.setText("a");

    bar.find(false);
    bar.find(true);

    EXPECT_EQ(page.searches,
              (std::vector{Search{"a", forwards}, Search{"a", forwards}, Search{"a", backwards}}));
}

TEST_F(BrowserFindBarTest, SaysWhetherThereWasAMatch) {
    bar.setText("a");
    EXPECT_EQ(bar.status(), "");

    answer(true);
    EXPECT_EQ(bar.status(), "Found");

    bar.setText("ax");
    EXPECT_EQ(bar.status(), "Found");
    answer(false);
    EXPECT_EQ(bar.status(), "No matches");
}

TEST_F(BrowserFindBarTest, ASearchThatFindsNothingIsMadeAgainAtEachChange) {
    bar.setText("ax");
    answer(false);

    bar.setText("a");
    answer(true);

    EXPECT_EQ(bar.found(), true);
    EXPECT_EQ(page.searches.size(), 2U);
}

TEST_F(BrowserFindBarTest, ClearingTheTextTakesTheStatusAwayAtOnceWithoutASearch) {
    bar.setText("a");
    answer(true);

    bar.setText("");

    EXPECT_FALSE(bar.found());
    EXPECT_EQ(bar.status(), "");
    EXPECT_EQ(page.searches.size(), 1U);
}

TEST_F(BrowserFindBarTest, AnAnswerThatComesAfterTheTextWasClearedSaysNothing) {
    bar.setText("a");
    bar.setText("");

    answer(true);

    EXPECT_FALSE(bar.found());
}

TEST_F(BrowserFindBarTest, AnswersToPreviousTextsSayNothing) {
    bar.setText("a");
    bar.setText("ab");

    page.findAnswers[0].resolve(true);
    EXPECT_FALSE(bar.found());
    page.findAnswers[1].resolve(false);

    EXPECT_EQ(bar.found(), false);
}

TEST_F(BrowserFindBarTest, AnotherPageInFrontIsSearchedFromTheNextChangeOn) {
    bar.setText("a");
    answer(true);
    front = &otherPage;
    EXPECT_EQ(bar.status(), "Found");
    EXPECT_TRUE(otherPage.searches.empty());

    bar.find(false);

    EXPECT_EQ(otherPage.searches, std::vector{(Search{"a", forwards})});
    EXPECT_EQ(page.searches.size(), 1U);
}

TEST_F(BrowserFindBarTest, WithoutAPageNothingHappens) {
    front = nullptr;

    bar.setText("a");
    bar.find(true);

    EXPECT_FALSE(bar.found());
}

TEST_F(BrowserFindBarTest, TellsOnceOfEachOutcome) {
    int told = 0;
    bar.connectChanged([&] { ++told; });

    bar.setText("a");
    answer(true);
    bar.find(false);
    answer(true);
    bar.setText("");

    EXPECT_EQ(told, 2);
}

TEST_F(BrowserFindBarTest, AnAnswerAfterTheBarHasNobodyToTell) {
    auto brief = std::make_unique<BrowserFindBar>(searchInFront());
    brief->setText("a");
    brief.reset();

    answer(true);

    EXPECT_FALSE(bar.found());
}

}  // namespace
}  // namespace orvu
