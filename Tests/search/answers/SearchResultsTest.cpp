#include "search/SearchResults.h"

#include "search/answers/AnswerWorld.h"

#include <optional>
#include <string>

namespace orvu {
namespace {

using namespace std::chrono_literals;

class SearchResultsTest : public AnswerTest {
protected:
    void open(bool isPrivate = false) { shown.emplace(tab, isPrivate, kesto, world.services); }
    void goTo(std::string_view address) {
        page(*tab).load(url(address));
        page(*tab).finish("title");
    }
    /// How often a run came so far as to ask the page.
    [[nodiscard]] std::size_t runs() {
        pass(300ms);
        return asked();
    }

    Settings& settings = world.services.settings();
    std::optional<SearchResults> shown;
};

TEST_F(SearchResultsTest, APageOfResultsHasAStripAndAnAnswer) {
    open();

    EXPECT_EQ(shown->strip(), (SearchStrip{Prefs::Engine::google, "knives"}));
    EXPECT_TRUE(shown->showAnswer());
    EXPECT_EQ(shown->answer().question(), "knives");
    EXPECT_EQ(runs(), 1U);
}

TEST_F(SearchResultsTest, AnyOtherPageHasNeither) {
    goTo("https://a.example/search?q=knives");
    open();

    EXPECT_EQ(shown->strip(), std::nullopt);
    EXPECT_FALSE(shown->showAnswer());
    EXPECT_FALSE(shown->canShowAnswer());
    EXPECT_EQ(runs(), 0U);
}

TEST_F(SearchResultsTest, APrivateWindowHasTheStripAlone) {
    open(true);

    EXPECT_TRUE(shown->strip().has_value());
    EXPECT_FALSE(shown->showAnswer());
    EXPECT_FALSE(shown->canShowAnswer());
    EXPECT_EQ(runs(), 0U);
    EXPECT_EQ(world.model.looks, 0);
}

TEST_F(SearchResultsTest, WhereAnswersAreSwitchedOffNoneRunsOrCanBeShown) {
    settings.searchAnswers.set(false);
    open();

    EXPECT_TRUE(shown->strip().has_value());
    EXPECT_FALSE(shown->canShowAnswer());
    EXPECT_EQ(runs(), 0U);
    settings.searchAnswers.set(true);
    EXPECT_TRUE(shown->showAnswer());
    EXPECT_EQ(runs(), 1U);
}

TEST_F(SearchResultsTest, HiddenItCanBeShownAgainAndBeginsAnew) {
    open();
    EXPECT_EQ(runs(), 1U);
    shown->setAnswerOpen(false);
    EXPECT_FALSE(shown->showAnswer());
    EXPECT_TRUE(shown->canShowAnswer());
    EXPECT_FALSE(settings.searchAnswerOpen.get());

    shown->setAnswerOpen(true);
    EXPECT_TRUE(shown->showAnswer());
    EXPECT_EQ(runs(), 2U);
}

TEST_F(SearchResultsTest, HidingStopsNothing) {
    open();
    pass(300ms);
    shown->setAnswerOpen(false);
    tell(2);

    EXPECT_EQ(shown->answer().sources().size(), 2U);
    EXPECT_EQ(world.pageReads.wanted(), 2U);
}

TEST_F(SearchResultsTest, LeavingThePageStopsNothingAndTakesStripAndAnswerAwayAtOnce) {
    open();
    pass(300ms);
    tell(2);
    int changes = 0;
    shown->connectChanged([&] { ++changes; });
    page(*tab).load(url("https://a.example/"));

    EXPECT_EQ(changes, 1);
    EXPECT_EQ(shown->strip(), std::nullopt);
    EXPECT_FALSE(shown->showAnswer());
    EXPECT_EQ(world.pageReads.wanted(), 2U);
}

TEST_F(SearchResultsTest, AnotherSearchOrTheSameOneElsewhereBeginsAnew) {
    open();
    EXPECT_EQ(runs(), 1U);
    goTo("https://www.google.com/search?q=forks");
    EXPECT_EQ(shown->answer().question(), "forks");
    EXPECT_EQ(runs(), 2U);
    goTo("https://www.bing.com/search?q=forks");
    EXPECT_EQ(runs(), 3U);
}

TEST_F(SearchResultsTest, AnotherPageOrKindOfTheSameSearchBeginsNone) {
    open();
    EXPECT_EQ(runs(), 1U);
    goTo("https://www.google.com/search?q=knives&start=10");
    goTo("https://www.google.com/search?q=knives&udm=2");
    goTo("https://google.com/search?q=kni%76es#fragment");

    EXPECT_EQ(runs(), 1U);
    EXPECT_EQ(shown->page(), url("https://google.com/search?q=kni%76es#fragment"));
}

TEST_F(SearchResultsTest, GoingAndComingBackBeginsAnew) {
    open();
    EXPECT_EQ(runs(), 1U);
    goTo("https://a.example/");
    goTo(results);
    EXPECT_EQ(runs(), 2U);
}

TEST_F(SearchResultsTest, AFollowUpChangesTheQuestionAndNotThePage) {
    open();
    pass(300ms);
    tell(1);
    failPages();
    request().succeed("A.\nNext: forks");
    shown->answer().ask("forks");
    page(*tab).setTitle("another title");

    EXPECT_EQ(shown->answer().question(), "forks");
    EXPECT_EQ(shown->page(), url(results));
    EXPECT_EQ(shown->strip()->query, "knives");
    EXPECT_EQ(runs(), 1U);
}

TEST_F(SearchResultsTest, LinksAndSourcesOpenInTheSameTab) {
    open();
    shown->open(url("https://b.example/"));

    EXPECT_EQ(page(*tab).calls.back(), "load https://b.example/");
}

TEST_F(SearchResultsTest, ATabThatGoesHasNothing) {
    open();
    tab.reset();
    shown->open(url("https://b.example/"));
    settings.searchAnswerOpen.set(false);
    settings.searchAnswerOpen.set(true);

    EXPECT_EQ(shown->strip(), std::nullopt);
    EXPECT_TRUE(world.model.requests.empty());
}

TEST_F(SearchResultsTest, ItsEndEndsItsRun) {
    open();
    pass(300ms);
    tell(3);
    shown.reset();

    EXPECT_EQ(world.pageReads.wanted(), 0U);
    settings.searchAnswerOpen.set(false);
    goTo("https://www.bing.com/search?q=forks");
}

TEST_F(SearchResultsTest, AChangeThatConcernsItNotIsNotTold) {
    open();
    int changes = 0;
    shown->connectChanged([&] { ++changes; });
    page(*tab).setProgress(0.5);
    page(*tab).setTitle("other");

    EXPECT_EQ(changes, 0);
}

}  // namespace
}  // namespace orvu
