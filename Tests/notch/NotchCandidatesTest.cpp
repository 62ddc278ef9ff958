#include "notch/candidates/NotchCandidates.h"

#include "NotchWorld.h"
#include "foundation/RandomText.h"

namespace orvu {
namespace {

using NotchCandidatesTest = NotchTest;

// --- Top hit ----------------------------------------------------------------------------------

TEST_F(NotchCandidatesTest, OfTwoHostsVisitedEquallyOftenTheShorterIsTheTopHit) {
    for (int times = 0; times < 3; ++times) {
        visit("https://gardens.example/");
        visit("https://garden.example/");
    }

    EXPECT_EQ(ask("ga").topHit(), "garden.example");
}

TEST_F(NotchCandidatesTest, TheHostVisitedMoreOftenIsTheTopHitThoughItIsLonger) {
    for (int times = 0; times < 3; ++times) visit("https://gardens.example/");
    for (int times = 0; times < 2; ++times) visit("https://garden.example/");

    EXPECT_EQ(ask("ga").topHit(), "gardens.example");
}

TEST_F(NotchCandidatesTest, OfHostsAlikeInCountAndLengthTheOneMetFirstIsTheTopHit) {
    visit("https://gardenb.example/");
    visit("https://gardena.example/");
    bookmark("https://garden0.example/");

    EXPECT_EQ(ask("ga").topHit(), "gardenb.example");
}

TEST_F(NotchCandidatesTest, VisitsBookmarksAndTabsCountTowardsTheTopHitTogether) {
    visit("https://garden.example/");
    visit("https://gargoyle.example/");
    bookmark("https://gargoyle.example/");
    tab(url("https://gallery.example/"));
    tab(url("https://gallery.example/2"));
    tab(std::nullopt);
    bookmark("https://gallery.example/");

    EXPECT_EQ(ask("ga").topHit(), "gallery.example");
}

TEST_F(NotchCandidatesTest, TheLengthOfAHostIsCountedInCharacters) {
    visit("https://gaabc.example/");
    visit("https://gaöü.example/");

    EXPECT_EQ(ask("ga").topHit(), "gaöü.example");
}

TEST_F(NotchCandidatesTest, HostsAreTakenInLowerCaseAndWithoutTheirWww) {
    visit("https://WWW.Garden.example/");
    visit("https://garden.example/");
    visit("https://www.www.garage.example/");

    EXPECT_EQ(ask("GA").topHit(), "garden.example");
    EXPECT_EQ(ask("www.g").topHit(), "www.garage.example");
}

TEST_F(NotchCandidatesTest, TextThatBeginsWithWwwMatchesNoHostStoredWithIt) {
    visit("https://www.garden.example/");

    EXPECT_EQ(ask("www.ga").topHit(), std::nullopt);
}

TEST_F(NotchCandidatesTest, AHostTypedInFullIsNoTopHitButASite) {
    visit("https://garden.example/");

    const auto candidates = ask("garden.example");

    EXPECT_EQ(candidates.topHit(), std::nullopt);
    EXPECT_EQ(candidates.primaryTitle(), "Go to garden.example");
    EXPECT_EQ(candidates.primarySubtitle(), "Open the site");
    EXPECT_EQ(candidates.primaryHost(), "");
}

TEST_F(NotchCandidatesTest, OneLetterGivesNoTopHitThoughRowsMatchIt) {
    search("garden gates");
    tab(url("https://garden.example/"), "Garden");
    bookmark("https://garden.example/", "Garden");

    const auto candidates = ask("g");

    EXPECT_EQ(candidates.topHit(), std::nullopt);
    EXPECT_EQ(candidates.recentSearches(), Strings{"garden gates"});
    EXPECT_EQ(section(candidates, "Open tabs").size(), 1U);
    EXPECT_EQ(section(candidates, "Bookmarks").size(), 1U);
}

TEST_F(NotchCandidatesTest, OneCharacterOfSeveralCodePointsGivesNoTopHit) {
    visit("https://e\u0301cole.example/");

    EXPECT_EQ(ask("e\u0301").topHit(), std::nullopt);
    EXPECT_EQ(ask("e\u0301c").topHit(), "e\u0301cole.example");
}

TEST_F(NotchCandidatesTest, TextWithASpaceOrASlashGivesNoTopHit) {
    visit("https://garden.example/");

    EXPECT_EQ(ask("ga r").topHit(), std::nullopt);
    EXPECT_EQ(ask("ga/").topHit(), std::nullopt);
    EXPECT_EQ(ask(" ga\t").topHit(), "garden.example");
}

TEST_F(NotchCandidatesTest, AHostThatIsNearlyNothingButWwwIsATopHit) {
    tab(url("https://" + repeated("www.", 40) + "a/"));

    EXPECT_EQ(ask(repeated("www.", 30)).topHit(), repeated("www.", 39) + "a");
}

// --- Past searches ----------------------------------------------------------------------------

TEST_F(NotchCandidatesTest, PastSearchesComeNewestFirstAndOnceInTheirLatestSpelling) {
    search("Garden Gate");
    search("garden snail");
    search("GARDEN gate");
    search("roses");

    EXPECT_EQ(ask("ga").recentSearches(), (Strings{"GARDEN gate", "garden snail"}));
}

TEST_F(NotchCandidatesTest, ThreePastSearchesShowInAnEmptyFieldAndTwoBehindText) {
    for (const auto* const text : {"a1", "a2", "a3", "a4"}) search(text);

    EXPECT_EQ(ask("").recentSearches(), (Strings{"a4", "a3", "a2"}));
    EXPECT_EQ(ask("a").recentSearches(), (Strings{"a4", "a3"}));
}

TEST_F(NotchCandidatesTest, ASearchTypedInFullIsNotOfferedBackButItsBeginningIs) {
    search("garden");

    EXPECT_EQ(ask("Garden").recentSearches(), Strings{});
    EXPECT_EQ(rows(ask("garden")), Strings{});
    EXPECT_EQ(rows(ask("garde")), Strings{"rgarden"});
}

TEST_F(NotchCandidatesTest, PastSearchesBeginWithWholeCharacters) {
    search("cafe\u0301 society");

    EXPECT_EQ(ask("cafe").recentSearches(), Strings{});
    EXPECT_EQ(ask("café").recentSearches(), Strings{"cafe\u0301 society"});
}

// --- Ghost ------------------------------------------------------------------------------------

TEST_F(NotchCandidatesTest, TheGhostCompletesTheTopHitBeforeSearchesAndPredictions) {
    question.predictions = {"gardening"};
    EXPECT_EQ(ask("gar").ghost(), "dening");

    search("garden gate");
    EXPECT_EQ(ask("gar").ghost(), "den gate");

    visit("https://gargoyle.example/");
    EXPECT_EQ(ask("gar").ghost(), "goyle.example");
}

TEST_F(NotchCandidatesTest, AQueryThatEndsInASpaceHasNoGhostThoughRowsMatchIt) {
    search("garden gate");

    const auto candidates = ask("garden ");

    EXPECT_EQ(candidates.ghost(), "");
    EXPECT_EQ(rows(candidates), Strings{"rgarden gate"});
}

TEST_F(NotchCandidatesTest, ABlankBeforeTheQueryLeavesNoGhost) {
    search("garden gate");

    EXPECT_EQ(ask(" garden").ghost(), "");
    EXPECT_EQ(ask("  ").ghost(), "");
    EXPECT_EQ(ask("").ghost(), "");
}

TEST_F(NotchCandidatesTest, TheGhostKeepsTheLetterCaseOfItsSource) {
    question.predictions = {"Garden Gate", "gardens"};

    EXPECT_EQ(ask("GARDEN").ghost(), " Gate");
}

TEST_F(NotchCandidatesTest, WhatIsNoLongerThanTheQueryGivesNoGhost) {
    question.predictions = {"garden", "gar", "rose garden"};

    EXPECT_EQ(ask("garden").ghost(), "");
}

TEST_F(NotchCandidatesTest, TheGhostIsCutBetweenCharacters) {
    question.predictions = {"cafe\u0301s"};

    EXPECT_EQ(ask("café").ghost(), "s");
    EXPECT_EQ(ask("cafe").ghost(), "");
}

// --- Rows -------------------------------------------------------------------------------------

TEST_F(NotchCandidatesTest, AnEmptyFieldWithoutSearchesAndVisitsTodayShowsNothing) {
    visit("https://garden.example/", "Garden");
    bookmark("https://garden.example/", "Garden");
    tab(url("https://garden.example/"), "Garden");
    question.predictions = {"garden"};

    EXPECT_EQ(rows(ask("")), Strings{});
    EXPECT_EQ(rows(ask(" \t")), Strings{});
}

TEST_F(NotchCandidatesTest, AnEmptyFieldShowsPastSearchesAndTheVisitsOfToday) {
    search("garden gate");
    today = {visit("https://garden.example/", "Garden"), visits.front()};

    EXPECT_EQ(rows(ask("")), (Strings{"rgarden gate", "h" + identifier(1).string(),
                                      "h" + identifier(0).string()}));
    EXPECT_EQ(section(ask(""), "Earlier today").size(), 2U);
}

TEST_F(NotchCandidatesTest, SourcesStandInAFixedOrder) {
    visit("https://garden.example/1", "Garden");
    search("garden gate");
    bookmark("https://garden.example/2", "Garden");
    tab(url("https://garden.example/3"), "Garden");
    question.predictions = {"garden snail"};

    const auto candidates = ask("garden");

    Strings sections;
    for (const auto& entry : candidates.entries()) sections.push_back(entry.section);
    EXPECT_EQ(sections, (Strings{"Searches", "Searches", "Open tabs", "Bookmarks", "History"}));
}

TEST_F(NotchCandidatesTest, APastSearchIsSplitBehindWhatIsTyped) {
    search("Garden Gate");

    EXPECT_EQ(ask("gArd").entries(),
              (std::vector<NotchEntry>{{"rGarden Gate", "Searches", Sign::recent, "Gard", "en Gate",
                                        "", "Searched before", SearchFor{"Garden Gate"}}}));
    EXPECT_EQ(ask("").entries(),
              (std::vector<NotchEntry>{{"rGarden Gate", "Searches", Sign::recent, "", "Garden Gate",
                                        "", "Searched before", SearchFor{"Garden Gate"}}}));
}

TEST_F(NotchCandidatesTest, APredictionIsSplitBehindWhatIsTypedOrShowsWhole) {
    question.predictions = {"Garden", "rose garden"};

    EXPECT_EQ(ask("ga").entries(),
              (std::vector<NotchEntry>{
                  {"pGarden", "Searches", Sign::search, "Ga", "rden", "", "", SearchFor{"Garden"}},
                  {"prose garden", "Searches", Sign::search, "", "rose garden", "", "",
                   SearchFor{"rose garden"}}}));
}

TEST_F(NotchCandidatesTest, AnOpenTabShowsItsTitleAndItsHostWithoutWww) {
    const auto id = tab(url("https://www.garden.example/a"), "Roses").id;

    EXPECT_EQ(
        ask("rose").entries(),
        (std::vector<NotchEntry>{{"t" + id.string(), "Open tabs", Site{"garden.example"}, "",
                                  "Roses", "garden.example", "Switch to tab", SwitchToTab{id}}}));
}

TEST_F(NotchCandidatesTest, ABookmarkShowsItsTitleAndItsWholeHost) {
    const auto saved = bookmark("https://www.garden.example/a", "Roses");

    EXPECT_EQ(ask("rose").entries(),
              (std::vector<NotchEntry>{
                  {"b" + saved.id.string(), "Bookmarks", Site{"www.garden.example"}, "", "Roses",
                   "www.garden.example", "Bookmark", LoadAddress{saved.url}}}));
}

TEST_F(NotchCandidatesTest, AVisitShowsItsTitleItsHostAndItsTime) {
    const auto past = visit("https://www.garden.example/a", "Roses");

    EXPECT_EQ(
        ask("rose").entries(),
        (std::vector<NotchEntry>{{"h" + past.id.string(), "History", Site{"www.garden.example"}, "",
                                  "Roses", "www.garden.example", "at 0", LoadAddress{past.url}}}));
}

TEST_F(NotchCandidatesTest, AnAddressWithoutAHostShowsAnEmptyOne) {
    const auto past = visit("file:///home/roses.html", "Roses");

    EXPECT_EQ(ask("rose").entries(),
              (std::vector<NotchEntry>{{"h" + past.id.string(), "History", Site{""}, "", "Roses",
                                        "", "at 0", LoadAddress{past.url}}}));
}

TEST_F(NotchCandidatesTest, TheTabInFrontIsNotOffered) {
    const auto front = tab(url("https://a.example/"), "Roses").id;
    const auto other = tab(url("https://b.example/"), "Roses").id;
    current = front;

    EXPECT_EQ(rows(ask("rose")), Strings{"t" + other.string()});
}

TEST_F(NotchCandidatesTest, TwoTabsTwoBookmarksAndThreeVisitsAreTheMost) {
    for (int number = 0; number < 5; ++number) {
        const std::string address = "https://rose.example/" + std::to_string(number);
        visit(address);
        bookmark(address);
        tab(url(address));
    }

    EXPECT_EQ(rows(ask("rose")),
              (Strings{"t" + tabs[0].id.string(), "t" + tabs[1].id.string(),
                       "b" + bookmarks[0].id.string(), "b" + bookmarks[1].id.string(),
                       "h" + visits[4].id.string(), "h" + visits[3].id.string(),
                       "h" + visits[2].id.string()}));
}

TEST_F(NotchCandidatesTest, ATabIsFoundByItsHostAsWrittenAndNotByItsPath) {
    tab(url("https://Garden.example/roses"));

    EXPECT_EQ(rows(ask("arden")).size(), 1U);
    EXPECT_EQ(rows(ask("garden")).size(), 0U);
    EXPECT_EQ(rows(ask("roses")).size(), 0U);
    EXPECT_EQ(rows(ask("www.")).size(), 0U);
}

TEST_F(NotchCandidatesTest, ATabWithoutAnAddressIsFoundByItsTitle) {
    tab(std::nullopt, "New tab");

    const auto found = ask("new").entries();

    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].icon, NotchEntry::Icon{Site{""}});
    EXPECT_EQ(found[0].detail, "");
}

TEST_F(NotchCandidatesTest, ATextIsFoundThatTakesFewerBytesThanTheQueryDoes) {
    tab(std::nullopt, "kk");

    EXPECT_EQ(rows(ask("\u212A\u212A")).size(), 1U);
}

TEST_F(NotchCandidatesTest, BookmarksAndVisitsAreFoundByAddressInAnyLetterCase) {
    bookmark("https://a.example/Garden");
    visit("https://a.example/GARDEN");

    EXPECT_EQ(rows(ask("gaRden")).size(), 2U);
}

TEST_F(NotchCandidatesTest, ResultsPagesAreNoHistory) {
    search("roses");

    EXPECT_EQ(section(ask("google"), "History"), Strings{});
}

TEST_F(NotchCandidatesTest, AnAddressShowsOnceInHistoryWithItsLatestMatchingVisit) {
    visit("https://a.example/", "Roses");
    visit("https://a.example/", "Red roses");
    visit("https://a.example/", "Tulips");
    visit("https://A.example/", "Roses");

    EXPECT_EQ(rows(ask("rose")),
              (Strings{"h" + visits[3].id.string(), "h" + visits[1].id.string()}));
}

TEST_F(NotchCandidatesTest, UnderTwoPastSearchesFourPredictionsFollow) {
    search("ga1");
    search("ga2");
    question.predictions = {"gb1", "gb2", "gb3", "gb4", "gb5", "gb6"};

    EXPECT_EQ(rows(ask("ga")), (Strings{"rga2", "rga1", "pgb1", "pgb2", "pgb3", "pgb4"}));
}

TEST_F(NotchCandidatesTest, WithoutPastSearchesSixPredictionsShow) {
    question.predictions = {"a", "b", "c", "d", "e", "f", "g"};

    EXPECT_EQ(rows(ask("x")), (Strings{"pa", "pb", "pc", "pd", "pe", "pf"}));
}

TEST_F(NotchCandidatesTest, APredictionThatIsAPastSearchIsDroppedBeforeTheCap) {
    search("Ga1");
    question.predictions = {"gA1", "b1", "b2", "b3", "b4", "b5", "b6"};

    EXPECT_EQ(rows(ask("ga")), (Strings{"rGa1", "pb1", "pb2", "pb3", "pb4", "pb5"}));
}

}  // namespace
}  // namespace orvu
