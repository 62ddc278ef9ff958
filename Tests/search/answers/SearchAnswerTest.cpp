#include "search/answers/AnswerWorld.h"

#include "search/answers/PageReduction.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <optional>
#include <random>

namespace orvu {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class SearchAnswerTest : public AnswerTest {};

TEST_F(SearchAnswerTest, OneThatNeverRanReads) {
    EXPECT_EQ(answer.phase(), (Phase{Kind::reading, ""}));
    EXPECT_EQ(answer.question(), "");
    EXPECT_EQ(answer.answer(), "");
    EXPECT_TRUE(answer.followUps().empty());
    EXPECT_TRUE(answer.sources().empty());
}

// --- Waiting for the results -------------------------------------------------------------------

TEST_F(SearchAnswerTest, ResultsAreLookedFor300MillisecondsAfterLoadingEnds) {
    answer.run(tab, "knives");

    pass(299ms);
    EXPECT_EQ(asked(), 0U);
    pass(1ms);
    EXPECT_EQ(asked(), 1U);
}

TEST_F(SearchAnswerTest, APageThatLoadsIsWaitedForInStepsOf200Milliseconds) {
    page(*tab).load(url(results));
    answer.run(tab, "knives");
    pass(1100ms);
    page(*tab).finish("knives");

    pass(399ms);  // the sixth step ends at 1,200 milliseconds
    EXPECT_EQ(asked(), 0U);
    pass(1ms);
    EXPECT_EQ(asked(), 1U);
}

TEST_F(SearchAnswerTest, APageThatLoadsForLongerThanEightSecondsIsLookedAtAllTheSame) {
    page(*tab).load(url(results));
    answer.run(tab, "knives");

    pass(8299ms);
    EXPECT_EQ(asked(), 0U);
    pass(1ms);
    EXPECT_EQ(asked(), 1U);
}

TEST_F(SearchAnswerTest, WithoutResultsThePageIsAskedSixTimesMoreAndThenThereAreNone) {
    answer.run(tab, "knives");
    pass(300ms);
    for (std::size_t look = 1; look <= 6; ++look) {
        ASSERT_EQ(asked(), look);
        tell("[]");
        pass(699ms);
        ASSERT_EQ(asked(), look);
        EXPECT_EQ(answer.phase().kind, Kind::reading);
        pass(1ms);
    }
    ASSERT_EQ(asked(), 7U);
    tell("[]");

    EXPECT_EQ(answer.phase(), (Phase{Kind::failed, "Kesto couldn't find results on this page."}));
    pass(1min);
    EXPECT_EQ(asked(), 7U);
}

TEST_F(SearchAnswerTest, ResultsThatAreDrawnLateAreFound) {
    answer.run(tab, "knives");
    pass(300ms);
    tell("[]");
    pass(700ms);
    tell("[]");
    pass(700ms);
    tell(1);

    EXPECT_EQ(answer.sources().size(), 1U);
    EXPECT_EQ(asked(), 3U);
}

TEST_F(SearchAnswerTest, APageThatIsTooBusyToTellCountsAsOneWithoutResults) {
    answer.run(tab, "knives");
    pass(300ms + 7 * SearchAnswer::resultsPatience + 6 * 700ms);

    EXPECT_EQ(asked(), 7U);
    EXPECT_EQ(answer.phase().kind, Kind::failed);
}

TEST_F(SearchAnswerTest, ATabThatGoesEndsInNoAnswer) {
    answer.run(tab, "knives");
    tab.reset();
    pass(1min);

    EXPECT_NE(answer.phase().kind, Kind::thinking);
    EXPECT_TRUE(world.model.requests.empty());
    EXPECT_TRUE(world.pageReads.asked.empty());
}

TEST_F(SearchAnswerTest, ATabIsNotKeptByItsAnswer) {
    answer.run(tab, "knives");
    pass(300ms);
    const std::weak_ptr<BrowserTab> watched = tab;
    tab.reset();

    EXPECT_TRUE(watched.expired());
}

// --- Sources and pages -------------------------------------------------------------------------

TEST_F(SearchAnswerTest, ResultsAreNumberedAsTheyWereFound) {
    answer.run(tab, "knives");
    pass(300ms);
    tell(R"([["One","https://one.example/a","S","https://one.example"],
             ["Two","https://www.google.com/url?q=x","S","not a url"]])");

    EXPECT_THAT(answer.sources(),
                ElementsAre(SearchAnswer::Source{1, "One", url("https://one.example/a"),
                                                 url("https://one.example")},
                            SearchAnswer::Source{2, "Two", url("https://www.google.com/url?q=x"),
                                                 std::nullopt}));
    EXPECT_TRUE(answer.sourcesAreCurrent());
    EXPECT_EQ(answer.phase().kind, Kind::reading);
}

TEST_F(SearchAnswerTest, TheFirstThreePagesAreReadAtOnce) {
    answer.run(tab, "knives");
    pass(300ms);
    tell(6);

    ASSERT_EQ(world.pageReads.asked.size(), 3U);
    EXPECT_EQ(world.pageReads.asked[0],
              (PageRequest{url("https://1.example/"), url(results), SearchAnswer::userAgent}));
    EXPECT_EQ(world.pageReads.asked[2].url, url("https://3.example/"));
    EXPECT_THAT(SearchAnswer::userAgent,
                StartsWith("Mozilla/5.0 (Macintosh; Intel Mac OS X 10_15_7) "
                           "AppleWebKit/605.1.15 (KHTML, like Gecko) Version/"));
    EXPECT_EQ(answer.sources().size(), 6U);
    EXPECT_TRUE(world.model.requests.empty());
}

TEST_F(SearchAnswerTest, FourResultsReachTheModelOfWhichThreeHaveTheTextOfTheirPage) {
    answer.run(tab, "knives");
    pass(300ms);
    tell(6);
    world.pageReads.answerText(2, "third");
    world.pageReads.answerText(0, "first");
    world.pageReads.answerText(1, "second");
    while (world.background.doNext()) {
    }

    const std::vector<Kesto::Page> pages{{"[1] Title 1", "https://1.example/", "Snippet 1\nfirst"},
                                         {"[2] Title 2", "https://2.example/", "Snippet 2\nsecond"},
                                         {"[3] Title 3", "https://3.example/", "Snippet 3\nthird"},
                                         {"[4] Title 4", "https://4.example/", "Snippet 4\n"}};
    ASSERT_EQ(world.model.requests.size(), 1U);
    EXPECT_EQ(request().prompt, Kesto::prompt("knives", pages));
    EXPECT_EQ(request().instructions, SearchAnswer::systemPrompt);
    EXPECT_EQ(answer.phase().kind, Kind::thinking);
}

TEST_F(SearchAnswerTest, APageIsToldWithTheAddressThatItsResultShows) {
    answer.run(tab, "knives");
    pass(300ms);
    tell(R"([["One","https://www.google.com/url?q=1","S","one.example/a"]])");
    failPages();

    EXPECT_EQ(request().prompt, Kesto::prompt("knives", {{"[1] One", "one.example/a", "S\n"}}));
}

TEST_F(SearchAnswerTest, PagesThatAreNoHtmlOrDontComeHaveNoText) {
    answer.run(tab, "knives");
    pass(300ms);
    tell(3);
    world.pageReads.answer(0, PageDocument{"application/pdf", "text"});
    world.pageReads.answer(1, PageDocument{"", "text"});
    world.pageReads.answer(2, PageDocument{"application/XHTML+xml", "kept"});
    while (world.background.doNext()) {
    }

    EXPECT_THAT(request().prompt, HasSubstr("Snippet 1\\n\""));
    EXPECT_THAT(request().prompt, HasSubstr("Snippet 2\\n\""));
    EXPECT_THAT(request().prompt, HasSubstr("Snippet 3\\nkept\""));
}

TEST_F(SearchAnswerTest, WhatAPageSaysIsWorkedOutBesideTheMainThread) {
    answer.run(tab, "knives");
    pass(300ms);
    tell(1);
    world.pageReads.answerText(0, "<b>text</b>");

    EXPECT_TRUE(world.model.requests.empty());
    EXPECT_EQ(world.background.waiting(), 1U);
    EXPECT_TRUE(world.background.doNext());
    EXPECT_EQ(world.model.requests.size(), 1U);
    EXPECT_THAT(request().prompt,
                HasSubstr("Snippet 1\\n" + PageReduction::text("<b>text</b>") + "\""));
}

// --- Without a model ---------------------------------------------------------------------------

TEST_F(SearchAnswerTest, WithoutAModelTheSourcesAreShownAndNothingIsRead) {
    world.model.setUnavailable(UnavailableReason::noServer);
    answer.run(tab, "knives");
    pass(300ms);
    tell(2);

    EXPECT_EQ(answer.phase(),
              (Phase{Kind::unavailable, *Kesto::message(UnavailableReason::noServer)}));
    EXPECT_EQ(answer.sources().size(), 2U);
    EXPECT_TRUE(world.pageReads.asked.empty());
}

TEST_F(SearchAnswerTest, WithoutResultsAndModelTheResultsAreWhatIsMissing) {
    world.model.setUnavailable(UnavailableReason::noServer);
    answer.run(tab, "knives");
    pass(300ms);
    for (int look = 0; look < 7; ++look) {
        tell("[]");
        pass(700ms);
    }

    EXPECT_EQ(answer.phase().kind, Kind::failed);
}

TEST_F(SearchAnswerTest, AModelIsLookedForWithEachRun) {
    answer.run(tab, "knives");
    EXPECT_EQ(world.model.looks, 1);
    answer.run(tab, "forks");
    EXPECT_EQ(world.model.looks, 2);
}

// --- The answer --------------------------------------------------------------------------------

TEST_F(SearchAnswerTest, TheReplyBecomesAnAnswerAndProposedSearches) {
    think();
    request().succeed(" Sharp [1].\nNext: whetstones | steel | - “angles” ");

    EXPECT_EQ(answer.phase(), (Phase{Kind::done, ""}));
    EXPECT_EQ(answer.answer(), "Sharp [1].");
    EXPECT_THAT(answer.followUps(), ElementsAre("whetstones", "steel", "angles"));
}

TEST_F(SearchAnswerTest, AModelThatFailsIsToldInOneSentence) {
    think();
    request().fail("The model server went away.");

    EXPECT_EQ(answer.phase(),
              (Phase{Kind::failed, "Kesto couldn't answer that. The model server went away."}));
    EXPECT_EQ(answer.sources().size(), 2U);
}

TEST_F(SearchAnswerTest, AnotherQuestionKeepsPagesSourcesAndProposalsUntilItsReply) {
    think();
    const std::string first = request().prompt;
    request().succeed("A.\nNext: b");
    answer.ask("b");

    EXPECT_EQ(answer.question(), "b");
    EXPECT_EQ(answer.phase().kind, Kind::thinking);
    EXPECT_EQ(answer.answer(), "");
    EXPECT_THAT(answer.followUps(), ElementsAre("b"));
    EXPECT_EQ(answer.sources().size(), 2U);
    EXPECT_TRUE(answer.sourcesAreCurrent());
    EXPECT_EQ(asked(), 1U);
    EXPECT_EQ(world.pageReads.asked.size(), 2U);
    EXPECT_EQ(request().prompt.substr(0, request().prompt.rfind(':')),
              first.substr(0, first.rfind(':')));
    EXPECT_THAT(request().prompt, HasSubstr("My question: b"));
    request().succeed("C.");
    EXPECT_EQ(answer.answer(), "C.");
    EXPECT_TRUE(answer.followUps().empty());
}

// --- In the place of another -------------------------------------------------------------------

TEST_F(SearchAnswerTest, ANewRunEndsTheFormerAndKeepsItsSourcesUntilItHasItsOwn) {
    think();
    request().succeed("A.\nNext: b");
    answer.run(tab, "forks");

    EXPECT_EQ(answer.question(), "forks");
    EXPECT_EQ(answer.phase().kind, Kind::reading);
    EXPECT_EQ(answer.answer(), "");
    EXPECT_TRUE(answer.followUps().empty());
    EXPECT_EQ(answer.sources().size(), 2U);
    EXPECT_FALSE(answer.sourcesAreCurrent());
    pass(300ms);
    tell(1);
    EXPECT_EQ(answer.sources().size(), 1U);
    EXPECT_TRUE(answer.sourcesAreCurrent());
}

TEST_F(SearchAnswerTest, ARunThatWasReplacedTellsNothingMore) {
    answer.run(tab, "knives");
    pass(300ms);
    const auto old = page(*tab).answers[readings().back()];
    answer.run(tab, "forks");
    old.resolve({ScriptResult::Kind::json, listing(2)});

    EXPECT_TRUE(answer.sources().empty());
    EXPECT_EQ(answer.phase().kind, Kind::reading);
}

TEST_F(SearchAnswerTest, ARunThatIsReplacedDropsItsPagesAndItsQuestion) {
    answer.run(tab, "knives");
    pass(300ms);
    tell(3);
    EXPECT_EQ(world.pageReads.wanted(), 3U);
    answer.run(tab, "forks");
    EXPECT_EQ(world.pageReads.wanted(), 0U);

    pass(300ms);
    tell(1);
    world.pageReads.answer(3, std::nullopt);
    EXPECT_TRUE(request().isWanted());
    answer.ask("spoons");
    EXPECT_FALSE(world.model.requests[0].isWanted());
    EXPECT_TRUE(request().isWanted());
}

TEST_F(SearchAnswerTest, ItsEndDropsWhatIsUnderWay) {
    std::optional<SearchAnswer> other;
    other.emplace(kesto, world.loop, world.pageReads, world.background);
    other->run(tab, "knives");
    pass(300ms);
    tell(3);
    other.reset();

    EXPECT_EQ(world.pageReads.wanted(), 0U);
}

TEST_F(SearchAnswerTest, WhoHearsOfAChangeMayEndIt) {
    for (int which = 1; which <= 4; ++which) {
        std::optional<SearchAnswer> other;
        other.emplace(kesto, world.loop, world.pageReads, world.background);
        int changes = 0;
        other->connectChanged([&] {
            if (++changes == which) other.reset();
        });
        const auto reads = world.pageReads.asked.size();
        other->run(tab, "knives");
        pass(300ms);
        if (other) tell(1);
        if (world.pageReads.asked.size() > reads) world.pageReads.answer(reads, std::nullopt);
        if (other) request().succeed("A");
        EXPECT_FALSE(other.has_value()) << which;
    }
}

TEST_F(SearchAnswerTest, WhoHearsOfAChangeMayBeginAnotherRun) {
    bool again = true;
    answer.connectChanged([&] {
        if (answer.phase().kind == Kind::thinking && std::exchange(again, false)) {
            answer.run(tab, "forks");
        }
    });
    think();

    EXPECT_EQ(answer.question(), "forks");
    EXPECT_EQ(answer.phase().kind, Kind::reading);
    EXPECT_FALSE(world.model.requests[0].isWanted());
}

/// However runs, questions and what comes back follow each other, the last one asked for is the one
/// that is told.
TEST_F(SearchAnswerTest, RandomTracesEndInTheLastQuestion) {
    std::mt19937 random{16};
    for (int trace = 0; trace < 300; ++trace) {
        SearchAnswer mine{kesto, world.loop, world.pageReads, world.background};
        std::string last;
        for (int step = 0; step < 12; ++step) {
            const auto text = std::to_string(trace) + "." + std::to_string(step);
            switch (random() % 6) {
                case 0:
                    mine.run(tab, last = text);
                    break;
                case 1:
                    if (last.empty()) break;
                    mine.ask(last = text);
                    break;
                case 2:
                    pass(std::chrono::milliseconds{random() % 900});
                    break;
                case 3:
                    if (asked() > 0) tell(static_cast<int>(random() % 3));
                    break;
                case 4:
                    failPages();
                    break;
                default:
                    if (!world.model.requests.empty()) request().succeed("A " + last);
            }
            ASSERT_EQ(mine.question(), last);
            if (mine.phase().kind == Kind::done) {
                ASSERT_EQ(mine.answer(), "A " + last);
            }
        }
    }
}

}  // namespace
}  // namespace orvu
