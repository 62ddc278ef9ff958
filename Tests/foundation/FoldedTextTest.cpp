#include "foundation/text/FoldedText.h"

#include "RandomText.h"
#include "foundation/text/Text.h"

#include <gtest/gtest.h>

#include <array>

namespace orvu {
namespace {

/// Short texts of few different characters, so that one often stands in another.
std::string oftenContained(RandomText& random) {
    static constexpr std::array<std::string_view, 26> pieces{"a",
                                                             "A",
                                                             "b",
                                                             "a\u0301",
                                                             "á",
                                                             "Á",
                                                             "\u0301",
                                                             "\u0323",
                                                             "x",
                                                             "\r",
                                                             "\n",
                                                             "Σ",
                                                             "ς",
                                                             "İ",
                                                             "i",
                                                             "\u212A",
                                                             "👩‍👩‍👧",
                                                             "👩",
                                                             "🇩",
                                                             "🇩🇪",
                                                             "\u200D",
                                                             "\u1112",
                                                             "\u1161",
                                                             "하",
                                                             "\xFF",
                                                             "\xC3"};
    std::string result;
    for (auto left = random.below(5); left > 0; --left) {
        result += pieces[random.below(random.below(2) == 0 ? 6 : pieces.size())];
    }
    return result;
}

TEST(FoldedTextTest, LetterCaseAndSpellingDoNotMatter) {
    EXPECT_EQ(FoldedText{"CAFÉ"}, FoldedText{"cafe\u0301"});
    EXPECT_EQ(FoldedText{"ΟΔΟΣ"}, FoldedText{"οδος"});
    EXPECT_NE(FoldedText{"cafe"}, FoldedText{"café"});
    EXPECT_TRUE(FoldedText{"Red CARS"}.contains(FoldedText{"d c"}));
    EXPECT_TRUE(FoldedText{"Red CARS"}.beginsWith(FoldedText{"RED"}));
    EXPECT_FALSE(FoldedText{"a red car"}.beginsWith(FoldedText{"red"}));
}

TEST(FoldedTextTest, WhatIsLowerCasedAlreadyIsOnlyComposed) {
    EXPECT_EQ(FoldedText::fromLowercased("cafe\u0301"), FoldedText{"Café"});
}

TEST(FoldedTextTest, EveryTextBeginsWithTheEmptyTextAndContainsIt) {
    EXPECT_TRUE(FoldedText{}.contains(FoldedText{}));
    EXPECT_TRUE(FoldedText{}.beginsWith(FoldedText{}));
    EXPECT_TRUE(FoldedText{"\u0301"}.contains(FoldedText{}));
    EXPECT_TRUE(FoldedText{"\u0301"}.beginsWith(FoldedText{}));
    EXPECT_FALSE(FoldedText{}.contains(FoldedText{"a"}));
    EXPECT_FALSE(FoldedText{}.beginsWith(FoldedText{"a"}));
}

TEST(FoldedTextTest, AnswersAsTheComparisonsOfPlainTextsDo) {
    RandomText random{21};
    int contained = 0;
    int begun = 0;
    for (int i = 0; i < 40000; ++i) {
        const std::string text = random.below(8) == 0 ? random.text(8) : oftenContained(random);
        const std::string part = random.below(8) == 0 ? random.text(2) : oftenContained(random);
        const FoldedText folded{text};
        const FoldedText wanted{part};

        const bool contains = containsCharacters(lowercased(text), lowercased(part));
        const bool begins = beginsWithCharacters(lowercased(text), lowercased(part));

        const auto shown = testing::PrintToString(text) + " " + testing::PrintToString(part);
        ASSERT_EQ(folded.contains(wanted), contains) << shown;
        ASSERT_EQ(folded.beginsWith(wanted), begins) << shown;
        ASSERT_EQ(folded == wanted, composed(lowercased(text)) == composed(lowercased(part)))
            << shown;
        contained += contains && !part.empty() ? 1 : 0;
        begun += begins && !part.empty() ? 1 : 0;
    }
    EXPECT_GT(contained, 1000);
    EXPECT_GT(begun, 500);
}

TEST(FoldedTextTest, NoTextGetsShorterThanItsLeastPart) {
    for (int codePoint = 1; codePoint < 0x110000; ++codePoint) {
        std::string text;
        if (codePoint < 0x80) {
            text = {static_cast<char>(codePoint)};
        } else if (codePoint < 0x800) {
            text = {static_cast<char>(0xC0 | (codePoint >> 6)),
                    static_cast<char>(0x80 | (codePoint & 0x3F))};
        } else if (codePoint < 0x10000) {
            text = {static_cast<char>(0xE0 | (codePoint >> 12)),
                    static_cast<char>(0x80 | ((codePoint >> 6) & 0x3F)),
                    static_cast<char>(0x80 | (codePoint & 0x3F))};
        } else {
            text = {static_cast<char>(0xF0 | (codePoint >> 18)),
                    static_cast<char>(0x80 | ((codePoint >> 12) & 0x3F)),
                    static_cast<char>(0x80 | ((codePoint >> 6) & 0x3F)),
                    static_cast<char>(0x80 | (codePoint & 0x3F))};
        }
        ASSERT_LE(text.size(), 3 * lowercased(text).size()) << codePoint;
        ASSERT_LE(text.size(), 9 * composed(text).size()) << codePoint;
    }
    const FoldedText shortest{repeated("\u212A\u0327", 100)};
    EXPECT_EQ(shortest.text(), repeated("ķ", 100));
}

/// Where the characters of `text` begin and end, counted one by one.
std::vector<bool> boundaries(std::string_view text) {
    std::vector<bool> result(text.size() + 1);
    result[0] = true;
    for (std::size_t count = 1; count <= text.size(); ++count) {
        result[firstCharacters(text, count).size()] = true;
    }
    return result;
}

TEST(IsCharacterBoundaryTest, IsWhereACharacterBeginsOrEnds) {
    RandomText random{22};
    for (int i = 0; i < 10000; ++i) {
        const std::string text = random.below(4) == 0   ? random.bytes(12)
                                 : random.below(2) == 0 ? random.text(8)
                                                        : oftenContained(random);
        const auto expected = boundaries(text);
        for (std::size_t at = 0; at <= text.size(); ++at) {
            ASSERT_EQ(isCharacterBoundary(text, at), expected[at])
                << testing::PrintToString(text) << " at " << at;
        }
        EXPECT_FALSE(isCharacterBoundary(text, text.size() + 1));
    }
}

}  // namespace
}  // namespace orvu
