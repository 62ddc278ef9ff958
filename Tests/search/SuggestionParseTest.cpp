#include "foundation/RandomText.h"
#include "foundation/text/Text.h"
#include "support/SuggesterWorld.h"

#include <gtest/gtest.h>

#include <set>

namespace orvu {
namespace {

using Texts = std::vector<std::string>;

Texts parsed(std::string_view answer) { return SearchSuggester::parse(answer); }

TEST(SuggestionParseTest, TheTextsOfTheSecondElementAreTheAnswer) {
    EXPECT_EQ(parsed(R"(["ott", ["otters", "ottawa"]])"), (Texts{"otters", "ottawa"}));
}

TEST(SuggestionParseTest, FurtherElementsAreIgnored) {
    EXPECT_EQ(parsed(R"(["ott", ["otters"], [1], {"google:clientdata": null}, "x"])"),
              Texts{"otters"});
    EXPECT_EQ(parsed(R"([null, ["otters"]])"), Texts{"otters"});
}

TEST(SuggestionParseTest, AnElementThatIsNoTextGivesAnEmptyAnswer) {
    for (const std::string_view other : {"1", "null", "true", "[]", "{}", "1.5", "[\"x\"]"}) {
        EXPECT_EQ(parsed(joined({R"(["ott", ["otters", )", other, "]]"})), Texts{}) << other;
    }
}

TEST(SuggestionParseTest, AnElementThatIsNoTextCountsBehindTheSixthToo) {
    EXPECT_EQ(parsed(R"(["", ["a", "b", "c", "d", "e", "f", "g", 1]])"), Texts{});
}

TEST(SuggestionParseTest, OtherShapesGiveAnEmptyAnswer) {
    for (const std::string_view answer :
         {"", " ", "null", "1", "\"otters\"", "[]", "[\"ott\"]", "{}", R"({"0": "a", "1": ["b"]})",
          R"(["ott", "otters"])", R"(["ott", {"0": "otters"}])", R"(["ott", null])",
          R"([["otters"], "ott"])", R"(["ott", [])", R"(["ott", ["otters"]] x)",
          R"(callback(["ott", ["otters"]]))", "<!doctype html>", "[[["}) {
        EXPECT_EQ(parsed(answer), Texts{}) << answer;
    }
}

TEST(SuggestionParseTest, BlanksAreTrimmedAndEmptyTextsDropped) {
    EXPECT_EQ(parsed(R"(["", [" otters\t", "", "  ", "\u00a0ottawa\u3000", "a\n"]])"),
              (Texts{"otters", "ottawa", "a\n"}));
}

TEST(SuggestionParseTest, LaterDuplicatesAreDroppedInAnyLetterCase) {
    EXPECT_EQ(parsed(R"(["", ["Otters", "otters", "OTTERS ", "É", "é", "ottawa", "Otters"]])"),
              (Texts{"Otters", "É", "ottawa"}));
}

TEST(SuggestionParseTest, BothFormsOfAnAccentAreOneText) {
    EXPECT_EQ(parsed("[\"c\", [\"café\", \"CAFE\u0301\", \"cafe\"]]"), (Texts{"café", "cafe"}));
}

TEST(SuggestionParseTest, TheFirstSixAreTakenInTheEnginesOrder) {
    EXPECT_EQ(parsed(R"(["", ["z", "y", "Z", "", "x", "w", "v", "u", "t", "s"]])"),
              (Texts{"z", "y", "x", "w", "v", "u"}));
}

TEST(SuggestionParseTest, AnAnswerInLatin1IsRead) {
    EXPECT_EQ(parsed("[\"caf\xE9\", [\"caf\xE9 au lait\", \"\xDCr\xFCmqi\", \"100 \xA3\"]]"),
              (Texts{"café au lait", "Ürümqi", "100 £"}));
    EXPECT_EQ(parsed("[\"\xA0\", [\"\xA0 caf\xE9\xA0\"]]"), Texts{"café"});
}

TEST(SuggestionParseTest, AnAnswerInUtf8IsNotTakenForLatin1) {
    EXPECT_EQ(parsed("[\"\", [\"café\", \"日本\"]]"), (Texts{"café", "日本"}));
}

TEST(SuggestionParseTest, EscapedAndBareCharactersAreTheSame) {
    EXPECT_EQ(parsed(R"(["", ["caf\u00e9", "\ud83d\ude00", "a\u0000b"]])"),
              (Texts{"café", "😀", std::string{"a\0b", 3}}));
}

TEST(SuggestionParseTest, HalfASurrogatePairMakesItNoJson) {
    for (const std::string_view half :
         {R"(\ud83d)", R"(\ude00)", R"(\ud83dx)", R"(\ude00\ud83d)"}) {
        EXPECT_EQ(parsed(joined({R"(["", ["otters", ")", half, R"("]])"})), Texts{}) << half;
    }
}

TEST(SuggestionParseTest, ABareControlCharacterMakesItNoJson) {
    EXPECT_EQ(parsed(std::string_view{"[\"\", [\"a\0b\"]]", 14}), Texts{});
    EXPECT_EQ(parsed("[\"\", [\"a\nb\"]]"), Texts{});
    EXPECT_EQ(parsed("[\"\", [\"caf\xE9\", \"a\nb\"]]"), Texts{});
}

TEST(SuggestionParseTest, DeepNestingGivesAnEmptyAnswer) {
    const auto deep = repeated("[", 100'000);

    EXPECT_EQ(parsed(deep), Texts{});
    EXPECT_EQ(parsed(joined({deep, repeated("]", 100'000)})), Texts{});
    EXPECT_EQ(parsed(joined({R"(["", ["a"], )", deep, repeated("]", 100'000), "]"})), Texts{});
    EXPECT_EQ(parsed(repeated(R"({"a":)", 100'000)), Texts{});
}

TEST(SuggestionParseTest, TenMegabytesAreReadOrRefused) {
    const auto long1 = repeated("x", 10'000'000);
    const auto many = repeated("\"x\", ", 2'000'000);
    const auto latin = repeated("\xE9", 10'000'000);

    EXPECT_EQ(parsed(long1), Texts{});
    EXPECT_EQ(parsed(joined({R"(["", ["a", ")", long1, "\"]]"})), (Texts{"a", long1}));
    EXPECT_EQ(parsed(joined({R"(["", [)", many, "\"y\"]]"})), (Texts{"x", "y"}));
    EXPECT_EQ(parsed(latin), Texts{});
    EXPECT_EQ(parsed(joined({R"(["", ["a"], ")", latin, "\"]"})), Texts{"a"});
    EXPECT_EQ(parsed(std::string(10'000'000, '\0')), Texts{});
}

TEST(SuggestionParseTest, WhateverComesTheAnswerHasAtMostSixDifferentTextsAndNoBlanks) {
    RandomText random{44};
    int full = 0;
    for (int i = 0; i < 5000; ++i) {
        Texts offered;
        for (std::size_t left = random.below(16); left > 0; --left) {
            offered.push_back(random.text(3));
        }
        std::string answer = SuggesterWorld::body("", offered);
        if (random.below(4) == 0) answer[random.below(answer.size())] = random.bytes(1).c_str()[0];

        const auto texts = parsed(answer);

        std::set<std::string> different;
        for (const auto& text : texts) {
            EXPECT_FALSE(text.empty());
            EXPECT_TRUE(isWellFormed(text));
            EXPECT_EQ(trimmed(text, TrimSet::whitespaces), text);
            different.insert(lowercased(text));
        }
        ASSERT_EQ(different.size(), texts.size()) << testing::PrintToString(answer);
        ASSERT_LE(texts.size(), 6U);
        if (texts.size() == 6) ++full;
    }
    EXPECT_GT(full, 500);
}

TEST(SuggestionParseTest, AnyBytesGiveAnAnswer) {
    RandomText random{45};
    for (int i = 0; i < 5000; ++i) EXPECT_EQ(parsed(random.bytes(64)), Texts{});
}

}  // namespace
}  // namespace orvu
