#include "foundation/RandomText.h"
#include "foundation/text/Text.h"
#include "support/SuggesterWorld.h"

#include <gtest/gtest.h>

namespace orvu {
namespace {

using Correction = std::optional<std::string>;

/// What is offered as "Did you mean".
class CorrectionTest : public testing::Test, public SuggesterWorld {
protected:
    Correction corrected(const std::string& typed, const std::vector<std::string>& offered) {
        learn(typed, offered);
        return suggester->correction(typed);
    }
};

TEST_F(CorrectionTest, ANearPredictionIsOffered) {
    EXPECT_EQ(corrected("ottre", {"otter"}), Correction{});
    EXPECT_EQ(corrected("ottwr", {"otter"}), Correction{"otter"});
    EXPECT_EQ(corrected("sea otetrs", {"sea otters"}), Correction{"sea otters"});
}

TEST_F(CorrectionTest, TheAnswerIsInLowerCaseAndTheTypedTextInAnyCase) {
    EXPECT_EQ(corrected("Ottwr", {"OTTER"}), Correction{"otter"});
    EXPECT_EQ(suggester->correction("  OTTWR\t"), Correction{"otter"});
}

TEST_F(CorrectionTest, ItIsNotOfferedWhileThePredictionsLagBehind) {
    learn("ottwr", {"otter"});

    ask("ottwrs");
    EXPECT_EQ(suggester->correction("ottwrs"), Correction{});
    EXPECT_EQ(suggester->correction("ottwr"), Correction{"otter"});

    answer("ottwrs", {"otters"});
    EXPECT_EQ(suggester->correction("ottwrs"), Correction{"otters"});
    EXPECT_EQ(suggester->correction("ottwr"), Correction{});
}

TEST_F(CorrectionTest, TextsOfFewerThanFourCharactersAreNotCorrected) {
    EXPECT_EQ(corrected("ott", {"oat"}), Correction{});
    EXPECT_EQ(corrected("né👩‍👩‍👧", {"ne👩‍👩‍👧"}), Correction{});
    EXPECT_EQ(corrected("otte", {"oate"}), Correction{"oate"});
}

TEST_F(CorrectionTest, WithoutPredictionsThereIsNone) {
    EXPECT_EQ(corrected("ottwr", {}), Correction{});
    EXPECT_EQ(suggester->correction(""), Correction{});
}

TEST_F(CorrectionTest, AnyPredictionThatGoesOnFromTheTextMeansThatItWasUnderstood) {
    EXPECT_EQ(corrected("ottwr", {"otter", "OTTWR meaning"}), Correction{});
    EXPECT_EQ(corrected("ottws", {"otter", "ottwsx"}), Correction{});
}

TEST_F(CorrectionTest, APredictionGoesOnByWholeCharactersInAnyForm) {
    EXPECT_EQ(corrected("caf\u00E9", {"cafe\u0301 au lait"}), Correction{});
    EXPECT_EQ(corrected("cafe", {"cafe\u0301"}), Correction{"cafe\u0301"});
}

TEST_F(CorrectionTest, PredictionsForTheOtherFormOfAnAccentDoNotLagBehind) {
    learn("cafe\u0301 pariss", {"caf\u00E9 paris"});

    EXPECT_EQ(suggester->correction("caf\u00E9 pariss"), Correction{"caf\u00E9 paris"});
}

TEST_F(CorrectionTest, TheFirstPredictionIsCutToTheNumberOfTypedWords) {
    EXPECT_EQ(corrected("ottwr", {"otter pups for sale"}), Correction{"otter"});
    EXPECT_EQ(corrected("sea  ottwr", {"sea   otter pups"}), Correction{"sea otter"});
    EXPECT_EQ(corrected("sea otterr", {"otters", "sea otter"}), Correction{});
}

TEST_F(CorrectionTest, NoEditsAreNoCorrection) {
    EXPECT_EQ(corrected("sea  otter", {"Sea Otter pups"}), Correction{"sea otter"});
    EXPECT_EQ(corrected("sea otter x", {"sea  otter x"}), Correction{});
    EXPECT_EQ(corrected("caf\u00E9 otter", {"cafe\u0301  otter"}), Correction{});
}

TEST_F(CorrectionTest, OneEditIsAllowedForEachFourCharacters) {
    for (std::size_t length = 4; length <= 24; ++length) {
        const std::string typed(length, 'a');
        for (std::size_t edits = 1; edits <= length / 4 + 1; ++edits) {
            const std::string meant = std::string(edits, 'b') + std::string(length - edits, 'a');

            const auto offered = corrected(typed, {meant});

            EXPECT_EQ(offered, edits <= length / 4 ? Correction{meant} : Correction{})
                << length << " characters, " << edits << " edits";
            suggester =
                std::make_unique<SearchSuggester>(http, loop, settings, std::vector<std::string>{});
        }
    }
}

TEST_F(CorrectionTest, AtTheLimitsOfFourSevenEightAndElevenCharacters) {
    EXPECT_EQ(corrected("abcdefg", {"xbcdefg"}), Correction{"xbcdefg"});
    EXPECT_EQ(corrected("abcdefh", {"xycdefh"}), Correction{});
    EXPECT_EQ(corrected("abcdefgi", {"xycdefgi"}), Correction{"xycdefgi"});
    EXPECT_EQ(corrected("abcdefghijk", {"xyzdefghijk"}), Correction{});
    EXPECT_EQ(corrected("abcdefghijkl", {"xyzdefghijkl"}), Correction{"xyzdefghijkl"});
}

TEST_F(CorrectionTest, ALongPredictionIsNoCorrection) {
    EXPECT_EQ(corrected("ottwr", {repeated("otter", 50'000)}), Correction{});
    EXPECT_EQ(corrected("ottwx", {joined({"otter", repeated("\u0301", 100'000)})}), Correction{});
}

TEST_F(CorrectionTest, WhatIsOfferedIsNearTheTypedTextAndNeverTheTextItself) {
    RandomText random{46};
    int offered = 0;
    for (int i = 0; i < 3000; ++i) {
        std::string typed;
        std::string meant;
        for (std::size_t left = 4 + random.below(8); left > 0; --left) {
            const char letter =
                random.below(6) == 0 ? ' ' : static_cast<char>('a' + random.below(3));
            typed += letter;
            meant += random.below(8) == 0 ? 'x' : letter;
        }
        const std::string text{trimmed(typed, TrimSet::whitespaces)};

        const auto correction = corrected(text, {meant});

        if (!correction) continue;
        ++offered;
        const auto edits = SearchSuggester::distance(lowercased(text), *correction);
        EXPECT_GE(edits, 1U);
        EXPECT_LE(edits, characterCount(text) / 4);
    }
    EXPECT_GT(offered, 300);
}

}  // namespace
}  // namespace orvu
