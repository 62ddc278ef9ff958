#include "search/SearchSuggester.h"

#include "foundation/RandomText.h"
#include "support/SuggesterWorld.h"

#include <gtest/gtest.h>

namespace orvu {
namespace {

using namespace std::chrono_literals;
using Texts = std::vector<std::string>;

class SearchSuggesterTest : public testing::Test, public SuggesterWorld {};

TEST_F(SearchSuggesterTest, ATextThatStandsFor90MillisecondsIsSent) {
    type("otters");

    loop.advance(89ms);
    EXPECT_EQ(http.asked, Texts{});
    loop.advance(1ms);

    EXPECT_EQ(http.asked, Texts{address("otters")});
}

TEST_F(SearchSuggesterTest, EachKeyBeginsTheWaitAnew) {
    for (const auto* text : {"o", "ot", "ott", "otte"}) {
        type(text);
        loop.advance(89ms);
    }
    EXPECT_EQ(http.asked, Texts{});

    loop.advance(1ms);

    EXPECT_EQ(http.asked, Texts{address("otte")});
}

TEST_F(SearchSuggesterTest, AnAnswerIsShownWithOneSignal) {
    learn("ott", {"otters", "ottawa"});

    EXPECT_EQ(predictions(), (Texts{"otters", "ottawa"}));
    EXPECT_EQ(suggester->forQuery(), "ott");
    EXPECT_EQ(changes, 1);
}

TEST_F(SearchSuggesterTest, TheFirstThreeLanguagesAreTold) {
    ask("otters");

    EXPECT_EQ(http.sentHeaders.at(0), (HttpSession::Headers{{"Accept-Language", "de-DE,en,fr"}}));
}

TEST_F(SearchSuggesterTest, WithoutLanguagesNoneAreTold) {
    SearchSuggester plain{http, loop, settings, {}};

    plain.update("otters", Privacy::ordinary);
    pause();

    EXPECT_EQ(http.sentHeaders.at(0), HttpSession::Headers{});
}

TEST_F(SearchSuggesterTest, BlanksAroundATextAreNotSent) {
    ask(" \t sea otters\u00A0 ");

    EXPECT_EQ(http.asked, Texts{address("sea otters")});
}

TEST_F(SearchSuggesterTest, NothingIsClearedWhileANewTextWaits) {
    learn("ott", {"otters", "ottawa"});

    ask("otte");

    EXPECT_EQ(predictions(), (Texts{"otters", "ottawa"}));
    EXPECT_EQ(suggester->forQuery(), "ott");
    EXPECT_EQ(changes, 1);
}

TEST_F(SearchSuggesterTest, ALateAnswerToAnOlderTextIsDropped) {
    ask("ott");
    ask("otte");

    EXPECT_FALSE(answer("ott", {"ottawa"}));
    EXPECT_EQ(http.abandoned, Texts{address("ott")});
    EXPECT_EQ(changes, 0);
    EXPECT_TRUE(answer("otte", {"otters"}));

    EXPECT_EQ(predictions(), Texts{"otters"});
    EXPECT_EQ(suggester->forQuery(), "otte");
}

TEST_F(SearchSuggesterTest, AKeyRightBehindAnAnswerLeavesItStandingUntilTheNext) {
    ask("ott");
    http.answer(address("ott"), 200, body("ott", {"otters"}));

    type("otte");

    EXPECT_EQ(predictions(), Texts{"otters"});
    EXPECT_EQ(suggester->forQuery(), "ott");
    EXPECT_EQ(changes, 1);
    ask("ott");
    EXPECT_EQ(http.asked.size(), 1U) << "what came was not kept";
}

TEST_F(SearchSuggesterTest, AFailedRequestLeavesWhatIsShownAndIsTriedAgain) {
    learn("ott", {"otters"});
    ask("otte");

    http.fail(address("otte"));
    loop.advance(0ms);

    EXPECT_EQ(predictions(), Texts{"otters"});
    EXPECT_EQ(suggester->forQuery(), "ott");
    EXPECT_EQ(changes, 1);
    ask("otte");
    EXPECT_EQ(http.asked.size(), 3U);
}

TEST_F(SearchSuggesterTest, AnAnswerThatDoesNotParseCountsAsAnEmptyOneAndIsKept) {
    learn("ott", {"otters"});
    ask("otte");

    answerWith(address("otte"), "<html>");

    EXPECT_EQ(predictions(), Texts{});
    EXPECT_EQ(suggester->forQuery(), "otte");
    type("ott");
    EXPECT_EQ(predictions(), Texts{"otters"});
    ask("otte");
    EXPECT_EQ(predictions(), Texts{});
    EXPECT_EQ(http.asked.size(), 2U);
}

TEST_F(SearchSuggesterTest, TheStatusOfAnAnswerIsNotLookedAt) {
    ask("ott");

    answerWith(address("ott"), body("ott", {"otters"}), 503);

    EXPECT_EQ(predictions(), Texts{"otters"});
}

TEST_F(SearchSuggesterTest, ATextThatWasAnsweredIsNotSentAgainInAnyLetterCase) {
    learn("ott", {"otters"});
    learn("sea", {"seal"});

    type("OTT");

    EXPECT_EQ(predictions(), Texts{"otters"});
    EXPECT_EQ(suggester->forQuery(), "OTT");
    EXPECT_EQ(loop.pendingTimers(), 0U);
    pause();
    EXPECT_EQ(http.asked.size(), 2U);
}

TEST_F(SearchSuggesterTest, TheSameTextAgainGivesNoSignal) {
    learn("ott", {"otters"});

    type("ott");
    type(" ott ");

    EXPECT_EQ(changes, 1);
}

TEST_F(SearchSuggesterTest, AnEmptyAnswerIsKeptToo) {
    learn("xqz", {});
    learn("ott", {"otters"});

    ask("xqz");

    EXPECT_EQ(predictions(), Texts{});
    EXPECT_EQ(suggester->forQuery(), "xqz");
    EXPECT_EQ(http.asked.size(), 2U);
}

TEST_F(SearchSuggesterTest, APredictionThatIsTheTextItselfInAnyCaseIsDropped) {
    learn("ott", {"Ott", "otters", "OTT "});
    EXPECT_EQ(predictions(), Texts{"otters"});

    learn("sea", {"SEA"});

    EXPECT_EQ(predictions(), Texts{});
    EXPECT_EQ(suggester->forQuery(), "sea");
}

TEST_F(SearchSuggesterTest, BothFormsOfAnAccentAreTheSameText) {
    learn("caf\u00E9", {"cafe\u0301", "caf\u00E9s"});
    EXPECT_EQ(predictions(), Texts{"caf\u00E9s"});

    type("Cafe\u0301");

    EXPECT_EQ(predictions(), Texts{"caf\u00E9s"});
    EXPECT_EQ(http.asked.size(), 1U);
}

TEST_F(SearchSuggesterTest, TheChosenEngineIsAsked) {
    for (const auto& facts : Prefs::engines) {
        defaults.setString("searchEngine", facts.rawValue);

        ask(facts.rawValue);

        EXPECT_EQ(http.asked.back(), address(facts.rawValue, facts.engine));
    }
}

TEST_F(SearchSuggesterTest, AnotherEngineFindsWhatTheFirstOneAnswered) {
    learn("ott", {"otters"});
    type("");
    defaults.setString("searchEngine", "ecosia");

    type("ott");

    EXPECT_EQ(predictions(), Texts{"otters"});
    EXPECT_EQ(loop.pendingTimers(), 0U);
}

TEST_F(SearchSuggesterTest, BehindABangGoogleIsAskedWhateverTheSetting) {
    defaults.setString("searchEngine", "duckduckgo");

    ask("!w sea otters");

    EXPECT_EQ(http.asked, Texts{address("sea otters", Prefs::Engine::google)});
    answer("sea otters", {"sea otters asleep"});
    EXPECT_EQ(suggester->forQuery(), "sea otters");
}

TEST_F(SearchSuggesterTest, ATextBehindABangSharesTheAnswerOfThePlainOne) {
    learn("ott", {"otters"});
    type("");

    type("!yt OTT");

    EXPECT_EQ(predictions(), Texts{"otters"});
    EXPECT_EQ(suggester->forQuery(), "OTT");
}

TEST_F(SearchSuggesterTest, AnEmptyFieldSendsNothingAndEmptiesThePredictions) {
    learn("ott", {"otters"});

    for (const auto* text : {"", " ", "\t\u3000"}) ask(text);

    EXPECT_EQ(http.asked.size(), 1U);
    EXPECT_EQ(predictions(), Texts{});
    EXPECT_EQ(suggester->forQuery(), "");
    EXPECT_EQ(changes, 2);
}

TEST_F(SearchSuggesterTest, ATextThatIsHeldBackEmptiesThePredictionsAndEndsTheRequest) {
    learn("ott", {"otters"});
    ask("someone@example");

    ask("someone@example.org");

    EXPECT_EQ(http.abandoned, Texts{address("someone@example")});
    EXPECT_EQ(http.asked.size(), 2U);
    EXPECT_EQ(predictions(), Texts{});
    EXPECT_EQ(suggester->forQuery(), "someone@example.org");
}

TEST_F(SearchSuggesterTest, WhatStandsBehindABangIsHeldBackTheSameWay) {
    for (const auto* text : {"!w someone@example.org", "!w 123456789", "!g otters.example"}) {
        ask(text);
    }

    EXPECT_EQ(http.asked, Texts{});
}

TEST_F(SearchSuggesterTest, APrivateWindowNeverSendsAndNeverSeesWhatWasAnswered) {
    learn("ott", {"otters"});

    typePrivately("ott");
    pause();

    EXPECT_EQ(predictions(), Texts{});
    EXPECT_EQ(suggester->forQuery(), "ott");
    typePrivately("sea");
    pause();
    EXPECT_EQ(http.asked.size(), 1U);
}

TEST_F(SearchSuggesterTest, WithTheSettingOffNothingIsSentOrShown) {
    learn("ott", {"otters"});
    defaults.setBoolean("searchSuggestions", false);

    ask("ott");
    EXPECT_EQ(predictions(), Texts{});
    ask("sea");
    EXPECT_EQ(http.asked.size(), 1U);

    defaults.setBoolean("searchSuggestions", true);
    ask("sea");
    EXPECT_EQ(http.asked.size(), 2U);
}

TEST_F(SearchSuggesterTest, ATextWithoutAnAddressIsNotSent) {
    SearchSuggester lost{http, loop, settings, {}, [](Prefs::Engine, std::string_view) {
                             return std::optional<Url>{};
                         }};

    lost.update("otters", Privacy::ordinary);
    pause();

    EXPECT_EQ(http.asked, Texts{});
    EXPECT_EQ(lost.forQuery(), "");
}

TEST_F(SearchSuggesterTest, HoweverTypedThereIsOneRequestAtATimeAndItsAnswerIsTheTextsOwn) {
    RandomText random{41};
    for (int step = 0; step < 5000; ++step) {
        const std::string text(1 + random.below(3), static_cast<char>('a' + random.below(3)));
        switch (random.below(4)) {
            case 0:
            case 1:
                type(text);
                break;
            case 2:
                loop.advance(std::chrono::milliseconds{random.below(120)});
                break;
            default:
                const auto open = http.open();
                if (open.empty()) break;
                const auto wanted = open.front().substr(open.front().rfind('=') + 1);
                if (random.below(4) == 0) {
                    http.fail(open.front());
                } else {
                    EXPECT_TRUE(answer(wanted, {wanted + " and more"}));
                    EXPECT_EQ(suggester->forQuery(), wanted);
                }
        }
        ASSERT_LE(http.open().size(), 1U);
        const auto& shown = suggester->forQuery();
        ASSERT_EQ(predictions(), shown.empty() ? Texts{} : Texts{shown + " and more"});
    }
}

}  // namespace
}  // namespace orvu
