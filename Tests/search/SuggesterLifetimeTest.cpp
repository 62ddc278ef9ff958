#include "search/SearchSuggester.h"

#include "support/SuggesterWorld.h"

#include <gtest/gtest.h>

namespace orvu {
namespace {

using namespace std::chrono_literals;
using Texts = std::vector<std::string>;

/// What may happen to a suggester in the middle of its work.
class SuggesterLifetimeTest : public testing::Test, public SuggesterWorld {};

TEST_F(SuggesterLifetimeTest, AnObserverMayTypeOnInAnAnswer) {
    suggester->connectChanged([this] {
        if (suggester->forQuery() == "ott") type("otte");
    });

    learn("ott", {"otters"});
    pause();

    EXPECT_EQ(http.asked, (Texts{address("ott"), address("otte")}));
    answer("otte", {"otter"});
    EXPECT_EQ(predictions(), Texts{"otter"});
}

TEST_F(SuggesterLifetimeTest, AnObserverMayTypeOnInAnUpdate) {
    learn("ott", {"otters"});
    suggester->connectChanged([this] {
        if (suggester->forQuery().empty()) type("OTT");
    });

    type("");

    EXPECT_EQ(suggester->forQuery(), "OTT");
    EXPECT_EQ(predictions(), Texts{"otters"});
    EXPECT_EQ(changes, 3);
}

TEST_F(SuggesterLifetimeTest, AnObserverMayEndTheSuggesterInAnAnswer) {
    suggester->connectChanged([this] { suggester.reset(); });

    learn("ott", {"otters"});

    EXPECT_EQ(suggester, nullptr);
}

TEST_F(SuggesterLifetimeTest, AnObserverMayEndTheSuggesterInAnUpdate) {
    learn("ott", {"otters"});
    suggester->connectChanged([this] { suggester.reset(); });

    type("");

    EXPECT_EQ(suggester, nullptr);
}

TEST_F(SuggesterLifetimeTest, ASuggesterMayGoWhileATextStands) {
    type("ott");

    suggester.reset();
    pause();

    EXPECT_EQ(http.asked, Texts{});
}

TEST_F(SuggesterLifetimeTest, ASuggesterMayGoWhileItsRequestRuns) {
    ask("ott");

    suggester.reset();

    EXPECT_EQ(http.abandoned, Texts{address("ott")});
    EXPECT_FALSE(answer("ott", {"otters"}));
}

TEST_F(SuggesterLifetimeTest, ASuggesterMayGoRightBehindAnAnswer) {
    ask("ott");
    http.answer(address("ott"), 200, body("ott", {"otters"}));

    suggester.reset();
    loop.advance(0ms);

    EXPECT_EQ(changes, 1);
}

TEST_F(SuggesterLifetimeTest, TheTextOfAPredictionMayBeTypedAsItStands) {
    learn("ott", {"otters at sea, a text too long to stand within a string"});

    typePrivately(predictions()[0]);

    EXPECT_EQ(suggester->forQuery(), "otters at sea, a text too long to stand within a string");
}

}  // namespace
}  // namespace orvu
