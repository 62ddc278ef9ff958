#include "search/SuggestionGate.h"

#include "foundation/RandomText.h"
#include "support/PlainSuggestionGate.h"

#include <gtest/gtest.h>

#include <array>

namespace orvu {
namespace {

TEST(SuggestionGateTest, OrdinarySearchesPass) {
    for (const std::string_view text :
         {"otters", "sea otters", "what is 7 x 12?", "né à Paris", "c++", "@handle", "a@b", "1984",
          "1984 or 2001", "!x otters", "日本語", "👩‍👩‍👧", "it ends. "}) {
        EXPECT_TRUE(SuggestionGate::allows(text)) << text;
    }
}

TEST(SuggestionGateTest, EmptyTextDoesNotPass) { EXPECT_FALSE(SuggestionGate::allows("")); }

TEST(SuggestionGateTest, ATextOf120CharactersPassesAndOneOf121DoesNot) {
    for (const std::string_view character : {"a", "é", "e\u0301", "👩‍👩‍👧", "한"}) {
        EXPECT_TRUE(SuggestionGate::allows(repeated(character, 120))) << character;
        EXPECT_FALSE(SuggestionGate::allows(repeated(character, 121))) << character;
    }
}

TEST(SuggestionGateTest, AnEMailAddressAnywhereDoesNotPass) {
    for (const std::string_view text :
         {"me@example.org", "write to me@example.org today", "me@mail.example.co.uk please",
          "is né@exämple.org real", "x@y.zz now", "<me@example.org> hello", "a@b@example.org x"}) {
        EXPECT_FALSE(SuggestionGate::allows(text)) << text;
    }
}

TEST(SuggestionGateTest, AnEMailAddressInCapitalsDoesNotPass) {
    EXPECT_FALSE(SuggestionGate::allows("mail ME@EXAMPLE.ORG"));
    EXPECT_FALSE(SuggestionGate::allows("mail me@example.oRg now"));
}

TEST(SuggestionGateTest, WhatIsNoWholeEMailAddressPasses) {
    for (const std::string_view text :
         {"me @example.org x", "me@ example.org x", "me@example .org", "me@example.o rg",
          "me@example x", "me@.org x", "at @example.org x"}) {
        EXPECT_TRUE(SuggestionGate::allows(text)) << text;
    }
}

TEST(SuggestionGateTest, ARunOfNineDigitsDoesNotPassAndOneOfEightDoes) {
    EXPECT_FALSE(SuggestionGate::allows("123456789"));
    EXPECT_FALSE(SuggestionGate::allows("call 123456789 now"));
    EXPECT_TRUE(SuggestionGate::allows("12345678"));
    EXPECT_TRUE(SuggestionGate::allows("call 12345678 now"));
}

TEST(SuggestionGateTest, HyphensAndBlanksBetweenDigitsCountTowardsTheRun) {
    EXPECT_FALSE(SuggestionGate::allows("12-345-678"));
    EXPECT_FALSE(SuggestionGate::allows("1 2 3 4 5"));
    EXPECT_FALSE(SuggestionGate::allows("1\u00A0-\u00A0-\u00A0-\u00A05"));
    EXPECT_FALSE(SuggestionGate::allows("1       9"));
    EXPECT_TRUE(SuggestionGate::allows("1      8"));
    EXPECT_TRUE(SuggestionGate::allows("1234/5678/9012"));
    EXPECT_TRUE(SuggestionGate::allows("x--------1"));
}

TEST(SuggestionGateTest, DigitsOfOtherScriptsAreDigits) {
    EXPECT_FALSE(SuggestionGate::allows("١٢٣٤٥٦٧٨٩"));
}

TEST(SuggestionGateTest, ATextWithAFullStopAndNoSpaceDoesNotPass) {
    EXPECT_FALSE(SuggestionGate::allows("example.org"));
    EXPECT_FALSE(SuggestionGate::allows("intranet.local/page?x=1"));
    EXPECT_TRUE(SuggestionGate::allows("what is example.org"));
    EXPECT_TRUE(SuggestionGate::allows("otters."));
}

TEST(SuggestionGateTest, WhatBeginsWithHttpDoesNotPass) {
    for (const std::string_view text : {"http", "https://a", "http otters", "httpx"}) {
        EXPECT_FALSE(SuggestionGate::allows(text)) << text;
    }
}

TEST(SuggestionGateTest, ATextOfFewCharactersWithTooManyBytesDoesNotPass) {
    EXPECT_TRUE(SuggestionGate::allows(joined({"e", repeated("\u0301", 4000)})));
    EXPECT_FALSE(SuggestionGate::allows(joined({"e", repeated("\u0301", 5000)})));
    EXPECT_FALSE(SuggestionGate::allows(joined({"e", repeated("\u0301", 5'000'000)})));
}

TEST(SuggestionGateTest, TheLongestTextsAreSearchedToTheEnd) {
    // Had a search been given up as too long, they would not pass.
    for (const std::string_view piece : {"\u0301", "\u200D", "👩‍", "\u0903"}) {
        const auto run = repeated(piece, (SuggestionGate::maxBytes - 10) / piece.size());

        EXPECT_TRUE(SuggestionGate::allows(joined({"a", run}))) << piece;
        EXPECT_TRUE(SuggestionGate::allows(joined({"a@", run, ". a"}))) << piece;
        EXPECT_TRUE(SuggestionGate::allows(joined({"1", run, "2"}))) << piece;
    }
}

TEST(SuggestionGateTest, ItDecidesAsThePlainRuleDoes) {
    constexpr std::array<std::string_view, 20> pieces{
        "@", "@", ".",  ".",    "a",  "Z",       "org", " ",    "\u00A0", "\n",
        "é", "ſ", "👩", "\xFF", "\0", "e\u0301", "1",   "2345", "-",      "@b.co"};
    RandomText random{42};
    int passed = 0;
    int held = 0;
    for (int i = 0; i < 50'000; ++i) {
        std::string text = random.below(2) == 0 ? "" : "x ";  // a space is in no site
        for (std::size_t left = random.below(14); left > 0; --left) {
            text += pieces[random.below(pieces.size())];
        }

        const bool lets = SuggestionGate::allows(text);

        ASSERT_EQ(lets, plainGateLets(text)) << testing::PrintToString(text);
        ++(lets ? passed : held);
    }
    EXPECT_GT(passed, 10'000);
    EXPECT_GT(held, 10'000);
}

}  // namespace
}  // namespace orvu
