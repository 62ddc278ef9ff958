#include "NotchWorld.h"

namespace orvu {
namespace {

/// What stands under the field whatever is found: the primary row, the assistant's, the footer.
using NotchFixedRowsTest = NotchTest;

// --- Bangs ------------------------------------------------------------------------------------

TEST_F(NotchFixedRowsTest, BehindABangOnlySearchesShowAndTheyKeepTheBang) {
    visit("https://garden.example/", "Garden");
    bookmark("https://garden.example/", "Garden");
    tab(url("https://garden.example/"), "Garden");
    search("Garden Gate");
    question.predictions = {"garden snail"};

    const auto candidates = ask("!W garden");

    EXPECT_EQ(candidates.entries(),
              (std::vector<NotchEntry>{{"rGarden Gate", "Searches", Sign::recent, "Garden", " Gate",
                                        "", "Searched before", SearchFor{"!w Garden Gate"}},
                                       {"pgarden snail", "Searches", Sign::search, "garden",
                                        " snail", "", "", SearchFor{"!w garden snail"}}}));
    EXPECT_EQ(candidates.topHit(), std::nullopt);
    EXPECT_EQ(candidates.ghost(), "");
}

TEST_F(NotchFixedRowsTest, ABangNamesItsSiteInThePrimaryRow) {
    const auto candidates = ask(" !w  Garden Gate ");

    EXPECT_EQ(candidates.primaryTitle(), "Search Wikipedia for “Garden Gate”");
    EXPECT_EQ(candidates.primarySubtitle(), "wikipedia.org");
    EXPECT_EQ(candidates.primaryHost(), "wikipedia.org");
    EXPECT_EQ(candidates.primaryAction(), NotchAction{SearchFor{" !w  Garden Gate "}});
    EXPECT_EQ(candidates.bang()->query, "Garden Gate");
}

TEST_F(NotchFixedRowsTest, ABangKeyAloneIsAPlainSearch) {
    const auto candidates = ask("!w ");

    EXPECT_EQ(candidates.bang(), std::nullopt);
    EXPECT_EQ(candidates.primaryTitle(), "Search “!w”");
    EXPECT_EQ(candidates.primarySubtitle(), "Google Search");
}

// --- The fixed rows ---------------------------------------------------------------------------

TEST_F(NotchFixedRowsTest, TheTopHitDecidesThePrimaryRow) {
    visit("https://garden.example/roses");

    const auto candidates = ask("ga");

    EXPECT_EQ(candidates.primaryTitle(), "Go to garden.example");
    EXPECT_EQ(candidates.primarySubtitle(), "You've been here before");
    EXPECT_EQ(candidates.primaryHost(), "garden.example");
    EXPECT_EQ(candidates.primaryAction(), NotchAction{LoadAddress{url("https://garden.example")}});
}

TEST_F(NotchFixedRowsTest, ATopHitThatMakesNoAddressIsSearchedFor) {
    visit("https://gar%20den/");

    const auto candidates = ask("ga");

    EXPECT_EQ(candidates.topHit(), "gar den");
    EXPECT_EQ(candidates.primaryAction(), NotchAction{SearchFor{"ga"}});
}

TEST_F(NotchFixedRowsTest, OtherTextIsASearchWithTheChosenEngine) {
    question.engine = Prefs::Engine::duckduckgo;

    const auto candidates = ask(" Garden  gate ");

    EXPECT_EQ(candidates.primaryTitle(), "Search “Garden  gate”");
    EXPECT_EQ(candidates.primarySubtitle(), "DuckDuckGo Search");
    EXPECT_EQ(candidates.primaryHost(), "duckduckgo.com");
    EXPECT_EQ(candidates.primaryAction(), NotchAction{SearchFor{" Garden  gate "}});
    EXPECT_EQ(candidates.askTitle(), "Ask Kesto “Garden  gate”");
}

TEST_F(NotchFixedRowsTest, TextThatLooksLikeASiteIsOneWithoutAnIcon) {
    const auto candidates = ask(" garden.example ");

    EXPECT_EQ(candidates.primaryTitle(), "Go to garden.example");
    EXPECT_EQ(candidates.primarySubtitle(), "Open the site");
    EXPECT_EQ(candidates.primaryHost(), "");
    EXPECT_EQ(candidates.primaryAction(), NotchAction{SearchFor{" garden.example "}});
}

TEST_F(NotchFixedRowsTest, ACorrectionKeepsTheBang) {
    EXPECT_EQ(ask("gardne").queryWithCorrection("garden"), "garden");
    EXPECT_EQ(ask("!YT gardne").queryWithCorrection("garden"), "!yt garden");
}

// --- The footer -------------------------------------------------------------------------------

TEST_F(NotchFixedRowsTest, TheFooterSendsTheTypedTextToOtherSites) {
    const std::string query = " Garden gate ";
    const auto footer = ask(query).footer();

    ASSERT_TRUE(footer);
    ASSERT_EQ(footer->chips.size(), 4U);
    EXPECT_EQ(footer->chips[0].bang.name, "Wikipedia");
    EXPECT_EQ(footer->chips[0].help, "Search Wikipedia (type !w first)");
    EXPECT_EQ(footer->chips[0].action(query), SearchFor{"!w Garden gate"});
    EXPECT_EQ(footer->chips[1].help, "Search YouTube (type !yt first)");
    EXPECT_EQ(footer->chips[2].help, "Search Maps (type !m first)");
    EXPECT_EQ(footer->chips[3].help, "Search GitHub (type !gh first)");
    EXPECT_EQ(footer->chips[3].action(query), SearchFor{"!gh Garden gate"});
}

TEST_F(NotchFixedRowsTest, TheFooterTellsWhereSuggestionsComeFrom) {
    question.engine = Prefs::Engine::ecosia;
    EXPECT_EQ(ask("garden").footer()->note, "Suggestions from Ecosia");

    question.suggestionsOn = false;
    EXPECT_EQ(ask("garden").footer()->note, "Suggestions are off");
}

TEST_F(NotchFixedRowsTest, NoFooterStandsUnderBlanksABangOrASite) {
    EXPECT_EQ(ask("").footer(), std::nullopt);
    EXPECT_EQ(ask(" \t").footer(), std::nullopt);
    EXPECT_EQ(ask("!w garden").footer(), std::nullopt);
    EXPECT_EQ(ask("garden.example").footer(), std::nullopt);
}

TEST_F(NotchFixedRowsTest, NoFooterStandsInAPrivateWindow) {
    question.isPrivate = true;

    EXPECT_EQ(ask("garden").footer(), std::nullopt);
}

}  // namespace
}  // namespace orvu
