#include "search/answers/SearchAnswerCard.h"

#include "foundation/RandomText.h"
#include "search/answers/AnswerWorld.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace orvu {
namespace {

using namespace std::chrono_literals;
using Kind = SearchAnswer::Phase::Kind;
using Runs = std::vector<SearchAnswerCard::Run>;

// --- The status --------------------------------------------------------------------------------

TEST(SearchAnswerCardTest, TheStatusFollowsThePhase) {
    EXPECT_EQ(SearchAnswerCard::status({Kind::unavailable, "m"}, 3), "Top results");
    EXPECT_EQ(SearchAnswerCard::status({Kind::failed, "m"}, 3), "Top results");
    EXPECT_EQ(SearchAnswerCard::status({Kind::reading, ""}, 3), "Reading the top results…");
    EXPECT_EQ(SearchAnswerCard::status({Kind::thinking, ""}, 3), "Read 3 results · on this Mac");
    EXPECT_EQ(SearchAnswerCard::status({Kind::done, ""}, 3), "From 3 results · on this Mac");
}

TEST(SearchAnswerCardTest, TheStatusTellsFourResultsAtMost) {
    EXPECT_EQ(SearchAnswerCard::status({Kind::done, ""}, 6), "From 4 results · on this Mac");
    EXPECT_EQ(SearchAnswerCard::status({Kind::thinking, ""}, 4), "Read 4 results · on this Mac");
    EXPECT_EQ(SearchAnswerCard::status({Kind::done, ""}, 1), "From 1 results · on this Mac");
}

TEST(SearchAnswerCardTest, TheFaceThinksWhileItReadsOrThinks) {
    for (const Kind kind : {Kind::reading, Kind::thinking}) {
        EXPECT_TRUE(SearchAnswerCard::isThinking({kind, ""}));
    }
    for (const Kind kind : {Kind::unavailable, Kind::failed, Kind::done}) {
        EXPECT_FALSE(SearchAnswerCard::isThinking({kind, ""}));
    }
}

// --- Citations ---------------------------------------------------------------------------------

TEST(SearchAnswerCardTest, TwoNumbersInARowHaveASpaceEach) {
    EXPECT_EQ(SearchAnswerCard::cited("Sharp. [1][2] Yes."),
              (Runs{{"Sharp."}, {" 1", true}, {" 2", true}, {" Yes."}}));
}

TEST(SearchAnswerCardTest, AnAnswerWithoutCitationsIsPlain) {
    EXPECT_EQ(SearchAnswerCard::cited(" Plain text. "), (Runs{{" Plain text. "}}));
    EXPECT_EQ(SearchAnswerCard::cited(""), Runs{});
}

TEST(SearchAnswerCardTest, FromABracketThatIsNoNumberOnAllIsPlain) {
    EXPECT_EQ(SearchAnswerCard::cited("A [1] b [x] c [2] d"),
              (Runs{{"A"}, {" 1", true}, {" b [x] c [2] d"}}));
    for (const std::string_view text : {"[] [1]", "[ 1] [1]", "[1, 2] [1]", "[1.5] [1]", "[٣] [1]",
                                        "[99999999999999999999] [1]", "[[1]]", "[1", "]1["}) {
        EXPECT_EQ(SearchAnswerCard::cited(text), (Runs{{std::string{text}}})) << text;
    }
}

TEST(SearchAnswerCardTest, OnlySpacesGoBeforeACitation) {
    EXPECT_EQ(SearchAnswerCard::cited("  A\n [7]"), (Runs{{"A\n"}, {" 7", true}}));
    EXPECT_EQ(SearchAnswerCard::cited("[1]  [2]  B"), (Runs{{" 1", true}, {" 2", true}, {"  B"}}));
}

TEST(SearchAnswerCardTest, ANumberNeedNotBeASource) {
    EXPECT_EQ(SearchAnswerCard::cited("A[42]"), (Runs{{"A"}, {" 42", true}}));
    EXPECT_EQ(SearchAnswerCard::cited("A[-1][007]"), (Runs{{"A"}, {" -1", true}, {" 7", true}}));
}

/// Nothing of an answer is lost but spaces, brackets and how a number is written.
TEST(SearchAnswerCardTest, AllThatIsNoCitationStays) {
    RandomText random{11};
    for (int round = 0; round < 2000; ++round) {
        std::string text;
        for (int piece = 0; piece < 6; ++piece) {
            text += random.text(4);
            if (random.below(3) > 0) text += "[" + std::to_string(random.below(9)) + "]";
        }
        std::string kept;
        for (const auto& run : SearchAnswerCard::cited(text)) kept += run.text;
        const auto bare = [](std::string plain) {
            std::erase_if(plain, [](char c) { return c == ' ' || c == '[' || c == ']'; });
            return plain;
        };
        ASSERT_EQ(bare(kept), bare(text));
    }
}

// --- Sources -----------------------------------------------------------------------------------

class ListedSourcesTest : public AnswerTest {};

TEST_F(ListedSourcesTest, OfSixSourcesFiveAreListed) {
    think(6);

    const auto listed = SearchAnswerCard::listed(answer);
    ASSERT_EQ(listed.size(), 5U);
    EXPECT_EQ(listed[0].id, 1);
    EXPECT_EQ(listed[4].id, 5);
    EXPECT_EQ(SearchAnswerCard::status(answer.phase(), answer.sources().size()),
              "Read 4 results · on this Mac");
}

TEST_F(ListedSourcesTest, WhereThereIsNoAnswerTheSourcesAreListedAllTheSame) {
    think(2);
    request().fail("Gone.");
    EXPECT_EQ(SearchAnswerCard::listed(answer).size(), 2U);

    world.model.setUnavailable(UnavailableReason::noServer);
    answer.run(tab, "forks");
    pass(300ms);
    tell(3);
    EXPECT_EQ(SearchAnswerCard::listed(answer).size(), 3U);
}

TEST_F(ListedSourcesTest, ThoseOfAFormerSearchAreNotListed) {
    think(2);
    answer.run(tab, "forks");

    EXPECT_TRUE(SearchAnswerCard::listed(answer).empty());
}

TEST(SearchAnswerCardTest, ASourceIsNamedByTheHostThatItsResultShows) {
    const auto site = [](std::string_view leads, std::optional<Url> shown) {
        return SearchAnswerCard::site({1, "T", url(leads), std::move(shown)});
    };

    EXPECT_EQ(site("https://www.google.com/url?q=x", url("https://www.a.example/b")), "a.example");
    EXPECT_EQ(site("https://www.b.example/", std::nullopt), "b.example");
    EXPECT_EQ(site("https://c.example/", url("relative.example/a")), "c.example");
    EXPECT_EQ(site("https://www.www.d.example/", std::nullopt), "d.example");
}

TEST(SearchAnswerCardTest, ASourceIsCalledByItsNumberFirst) {
    EXPECT_EQ(SearchAnswerCard::accessibleName(
                  {2, "Knives", url("https://www.a.example/"), std::nullopt}),
              "2: Knives, a.example");
}

}  // namespace
}  // namespace orvu
