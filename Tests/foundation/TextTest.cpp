#include "foundation/text/Text.h"

#include "RandomText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <thread>
#include <vector>

namespace orvu {
namespace {

constexpr std::string_view family = "👩‍👩‍👧";
constexpr std::string_view flag = "🇩🇪";

TEST(WholeCodePointsTest, EndBeforeTheOneThatDoesNotFit) {
    EXPECT_EQ(wholeCodePoints("abc", 3), "abc");
    EXPECT_EQ(wholeCodePoints("abc", 2), "ab");
    EXPECT_EQ(wholeCodePoints("a\u00E9b", 2), "a");
    EXPECT_EQ(wholeCodePoints("a\u00E9b", 3), "a\u00E9");
    for (std::size_t bytes = 0; bytes < 4; ++bytes) {
        EXPECT_EQ(wholeCodePoints("\U0001F9A6", bytes), "");
    }
    EXPECT_EQ(wholeCodePoints("\x80\x80\x80\x80\x80\x80\x80", 6).size(), 2U);
    EXPECT_EQ(wholeCodePoints("", 0), "");
}

TEST(CharacterCountTest, CountsWhatPeopleSeeAsOneCharacter) {
    EXPECT_EQ(characterCount(""), 0U);
    EXPECT_EQ(characterCount("word"), 4U);
    EXPECT_EQ(characterCount("é"), 1U);
    EXPECT_EQ(characterCount("e\u0301"), 1U);
    EXPECT_EQ(characterCount(family), 1U);
    EXPECT_EQ(characterCount(flag), 1U);
    EXPECT_EQ(characterCount("\r\n"), 1U);
    EXPECT_EQ(characterCount("\n\r"), 2U);
    EXPECT_EQ(characterCount("한글"), 2U);
}

TEST(CharacterCountTest, BytesThatAreNoUtf8CountToo) {
    EXPECT_EQ(characterCount("a\xFFz"), 3U);
    EXPECT_EQ(characterCount("\xFF\xFF"), 2U);
    EXPECT_EQ(characterCount(std::string_view{"a\0b", 3}), 3U);
}

TEST(CharacterCountTest, ASequenceThatBreaksOffIsOneCharacter) {
    EXPECT_EQ(characterCount("\xE2\x82z"), 2U);
    EXPECT_EQ(firstCharacters("\xE2\x82z", 1), "\xE2\x82");
    EXPECT_EQ(wellFormed("\xE2\x82z"), "\uFFFDz");
}

TEST(CharacterCountTest, ThreadsCountBesideEachOther) {
    constexpr std::size_t rounds = 2000;
    const std::array<std::string, 4> texts{repeated(family, 10), repeated("e\u0301", 20),
                                           repeated(flag, 30), repeated("é", 40)};
    std::array<std::size_t, texts.size()> counted{};
    std::vector<std::jthread> threads;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        threads.emplace_back([&text = texts[i], &sum = counted[i]] {
            for (std::size_t round = 0; round < rounds; ++round) sum += characterCount(text);
        });
    }

    threads.clear();  // waits for them

    EXPECT_THAT(counted, testing::ElementsAre(10 * rounds, 20 * rounds, 30 * rounds, 40 * rounds));
}

TEST(CharactersTest, EachStandsForItself) {
    using Views = std::vector<std::string_view>;

    EXPECT_EQ(characters("abc"), (Views{"a", "b", "c"}));
    EXPECT_EQ(characters("ae\u0301\r\n👩‍👩‍👧🇩🇪\xFF"),
              (Views{"a", "e\u0301", "\r\n", "👩‍👩‍👧", "🇩🇪", "\xFF"}));
    EXPECT_EQ(characters(""), Views{});
}

TEST(CharactersTest, TogetherTheyAreTheTextAndAsManyAsAreCounted) {
    RandomText random{11};
    for (int i = 0; i < 1000; ++i) {
        const auto text = random.below(4) == 0 ? random.bytes(12) : random.text(12);

        const auto found = characters(text);

        std::string whole;
        for (const auto each : found) whole += each;
        EXPECT_EQ(whole, text);
        EXPECT_EQ(found.size(), characterCount(text)) << testing::PrintToString(text);
    }
}

TEST(ComposedTest, EquivalentTextsHaveOneForm) {
    EXPECT_EQ(composed("cafe\u0301"), "caf\u00E9");
    EXPECT_EQ(composed("\u212B"), "\u00C5");
    EXPECT_EQ(composed("\u1112\u1161\u11AB"), "한");
    EXPECT_EQ(composed("plain\r\n"), "plain\r\n");
    EXPECT_EQ(composed(""), "");
}

TEST(FirstCharactersTest, CutsBetweenCharactersOnly) {
    EXPECT_EQ(firstCharacters("e\u0301e\u0301", 1), "e\u0301");
    EXPECT_EQ(firstCharacters("a👩‍👩‍👧b", 2), "a👩‍👩‍👧");
    EXPECT_EQ(firstCharacters("\r\nx", 1), "\r\n");
}

TEST(FirstCharactersTest, AMarkBehindPlainLettersStaysWithItsLetter) {
    EXPECT_EQ(firstCharacters("abe\u0301d", 3), "abe\u0301");
}

TEST(FirstCharactersTest, GivesAllOfAShorterTextAndNothingOfNone) {
    EXPECT_EQ(firstCharacters("abc", 3), "abc");
    EXPECT_EQ(firstCharacters("abc", 40), "abc");
    EXPECT_EQ(firstCharacters("é", 1), "é");
    EXPECT_EQ(firstCharacters("abc", 0), "");
    EXPECT_EQ(firstCharacters("", 0), "");
    EXPECT_EQ(firstCharacters(flag, 0), "");
}

TEST(FirstCharactersTest, IsAlwaysAPrefixOfAtMostSoManyCharacters) {
    RandomText random{2};
    for (int i = 0; i < 3000; ++i) {
        const auto text = random.below(4) == 0 ? random.bytes(30) : random.text(30);
        const auto count = random.below(12);

        const auto head = firstCharacters(text, count);

        EXPECT_TRUE(text.starts_with(head)) << testing::PrintToString(text);
        EXPECT_LE(characterCount(head), count) << testing::PrintToString(text);
        if (characterCount(text) > count) {
            EXPECT_EQ(characterCount(head), count) << testing::PrintToString(text);
        } else {
            EXPECT_EQ(head, text);
        }
    }
}

TEST(TrimmedTest, BlanksAreTheSpaceSeparatorsAndTheTab) {
    EXPECT_EQ(trimmed(" \t\u00A0\u2003\u3000a b\u2003 ", TrimSet::whitespaces), "a b");
    EXPECT_EQ(trimmed("\na\n", TrimSet::whitespaces), "\na\n");
    EXPECT_EQ(trimmed(" \n a", TrimSet::whitespaces), "\n a");
}

TEST(TrimmedTest, LineEndsGoOnlyWithTheWiderSet) {
    EXPECT_EQ(trimmed("\r\n\v\f\u0085\u2028\u2029 a \n", TrimSet::whitespacesAndNewlines), "a");
}

TEST(TrimmedTest, InvisibleMarksAtTheEndsGoWithTheWhiteSpace) {
    for (const auto set : {TrimSet::whitespaces, TrimSet::whitespacesAndNewlines}) {
        EXPECT_EQ(trimmed("\uFEFFa\u200Bb\u200B ", set), "a\u200Bb");
    }
}

TEST(TrimmedTest, TextOfNothingElseBecomesEmpty) {
    EXPECT_EQ(trimmed("", TrimSet::whitespaces), "");
    EXPECT_EQ(trimmed(" \t\u00A0", TrimSet::whitespaces), "");
    EXPECT_EQ(trimmed("\r\n \u2029", TrimSet::whitespacesAndNewlines), "");
}

TEST(TrimmedTest, BytesThatAreNoUtf8StayAsTheyAre) {
    EXPECT_EQ(trimmed(" \xFF \x80 ", TrimSet::whitespaces), "\xFF \x80");
    EXPECT_EQ(trimmed("\xC2 a \xC2", TrimSet::whitespaces), "\xC2 a \xC2");
    EXPECT_EQ(trimmed("\x80\x80", TrimSet::whitespaces), "\x80\x80");
}

TEST(TrimmedTest, TrimmingTwiceChangesNothingMore) {
    RandomText random{3};
    for (int i = 0; i < 3000; ++i) {
        const auto text = random.below(4) == 0 ? random.bytes(20) : random.text(20);
        for (const auto set : {TrimSet::whitespaces, TrimSet::whitespacesAndNewlines}) {
            const auto once = trimmed(text, set);

            EXPECT_EQ(trimmed(once, set), once) << testing::PrintToString(text);
            EXPECT_NE(text.find(once), std::string::npos);
        }
    }
}

TEST(LowercasedTest, KnowsNoLocale) {
    EXPECT_EQ(lowercased("TITLE"), "title");
    EXPECT_EQ(lowercased("IÉÀÖ"), "iéàö");
    EXPECT_EQ(lowercased("İ"), "i\u0307");
    EXPECT_EQ(lowercased("ТЕКСТ"), "текст");
}

TEST(LowercasedTest, AFinalSigmaMatchesAnOrdinaryOne) {
    EXPECT_EQ(lowercased("ΟΔΟΣ"), "οδοσ");
    EXPECT_EQ(lowercased("οδος"), "οδοσ");
}

TEST(LowercasedTest, ATextThatGrowsIsWholeAfterwards) {
    EXPECT_EQ(lowercased(repeated("Ⱥ", 1000)), repeated("ⱥ", 1000));
    EXPECT_EQ(lowercased(repeated("İ", 1000)), repeated("i\u0307", 1000));
}

TEST(LowercasedTest, BytesThatAreNoUtf8StayAsTheyAre) {
    EXPECT_EQ(lowercased("A\xFFZ\x80É"), "a\xFFz\x80é");
    EXPECT_EQ(lowercased(repeated("\xFF", 1000)), repeated("\xFF", 1000));
}

TEST(LowercasedTest, DoingItTwiceChangesNothingMore) {
    RandomText random{4};
    for (int i = 0; i < 3000; ++i) {
        const auto once = lowercased(random.text(20));

        EXPECT_EQ(lowercased(once), once);
    }
}

TEST(ContainsCharactersTest, FindsWholeCharactersOnly) {
    EXPECT_TRUE(containsCharacters("a red car", "red"));
    EXPECT_FALSE(containsCharacters("a red car", "Red"));
    EXPECT_FALSE(containsCharacters("cafe\u0301s", "cafe"));
    EXPECT_TRUE(containsCharacters("cafe\u0301s", "cafe\u0301"));
    EXPECT_FALSE(containsCharacters(family, "👩"));
    EXPECT_FALSE(containsCharacters("a\r\nb", "\n"));
}

TEST(ContainsCharactersTest, CanonicallyEquivalentTextIsTheSame) {
    EXPECT_TRUE(containsCharacters("cafe\u0301s", "café"));
    EXPECT_TRUE(containsCharacters("cafés", "cafe\u0301"));
    EXPECT_TRUE(containsCharacters("한글", "\u1112\u1161\u11AB"));
    EXPECT_TRUE(containsCharacters("x\u0323\u0307", "x\u0307\u0323"));
}

TEST(ContainsCharactersTest, MoreMarksThanAnyScriptNeedsAreStillFound) {
    const auto text = joined({"a", "x", repeated("\u0316\u0301", 100), "b"});

    EXPECT_TRUE(containsCharacters(text, text));
    EXPECT_TRUE(containsCharacters(text, joined({"x", repeated("\u0316\u0301", 100)})));
    EXPECT_FALSE(containsCharacters(text, joined({"x", repeated("\u0316\u0301", 99)})));
    EXPECT_TRUE(containsCharacters(joined({"e", repeated("\u0301\u0316", 14)}),
                                   joined({"e", repeated("\u0316\u0301", 14)})));
}

TEST(ContainsCharactersTest, TheEmptyTextStandsInEveryText) {
    EXPECT_TRUE(containsCharacters("", ""));
    EXPECT_TRUE(containsCharacters("é", ""));
    EXPECT_FALSE(containsCharacters("", "é"));
    EXPECT_TRUE(containsCharacters({}, {}));
    EXPECT_FALSE(containsCharacters({}, "e"));
}

TEST(ContainsCharactersTest, FindsALaterOccurrenceBehindOneThatIsNoWholeCharacter) {
    EXPECT_TRUE(containsCharacters("e\u0301e", "e"));
    EXPECT_TRUE(containsCharacters("aaá aab", "aab"));
}

TEST(ContainsCharactersTest, EveryTextContainsItsOwnHeadAndItself) {
    RandomText random{5};
    for (int i = 0; i < 1000; ++i) {
        const auto text = random.text(20);

        EXPECT_TRUE(containsCharacters(text, text)) << testing::PrintToString(text);
        EXPECT_TRUE(containsCharacters(text, firstCharacters(text, random.below(10))))
            << testing::PrintToString(text);
    }
}

TEST(BeginsWithCharactersTest, ComparesWholeCharactersAndEquivalentOnesAsTheSame) {
    EXPECT_TRUE(beginsWithCharacters("red car", "red"));
    EXPECT_FALSE(beginsWithCharacters("a red car", "red"));
    EXPECT_FALSE(beginsWithCharacters("cafe\u0301s", "cafe"));
    EXPECT_TRUE(beginsWithCharacters("cafe\u0301s", "café"));
    EXPECT_TRUE(beginsWithCharacters("cafés", "cafe\u0301"));
    EXPECT_FALSE(beginsWithCharacters("\r\na", "\r"));
    EXPECT_TRUE(beginsWithCharacters("é", ""));
    EXPECT_FALSE(beginsWithCharacters("", "é"));
}

TEST(ReplacingAllTest, ReplacesFromLeftToRightAndNotWithinWhatItPutIn) {
    EXPECT_EQ(replacingAll("a%sb%s", "%s", "%s%s"), "a%s%sb%s%s");
    EXPECT_EQ(replacingAll("aaa", "aa", "b"), "ba");
    EXPECT_EQ(replacingAll("wwwwww..", "www.", ""), "www.");
    EXPECT_EQ(replacingAll("", "x", "y"), "");
    EXPECT_EQ(replacingAll({}, "x", "y"), "");
    EXPECT_EQ(replacingAll("abc", "x", "y"), "abc");
}

TEST(WellFormedTest, TellsUtf8FromOtherBytes) {
    EXPECT_TRUE(isWellFormed(""));
    EXPECT_TRUE(isWellFormed("aé한👩"));
    EXPECT_TRUE(isWellFormed(std::string_view{"\0", 1}));
    for (const std::string_view bad : {"\x80", "\xC3", "\xC0\x80", "\xED\xA0\x80",
                                       "\xF4\x90\x80\x80", "\xFF", "\xE2\x82", "a\xE2\x82z"}) {
        EXPECT_FALSE(isWellFormed(bad)) << testing::PrintToString(bad);
    }
}

TEST(WellFormedTest, PutsAReplacementInThePlaceOfBadBytes) {
    EXPECT_EQ(wellFormed("a\xFFz"), "a\uFFFDz");
    EXPECT_EQ(wellFormed("é"), "é");
}

TEST(WellFormedTest, WhateverCameInIsWellFormedAfterwards) {
    RandomText random{6};
    for (int i = 0; i < 3000; ++i) {
        const auto bytes = random.bytes(20);
        const auto text = random.text(20);

        EXPECT_TRUE(isWellFormed(wellFormed(bytes))) << testing::PrintToString(bytes);
        EXPECT_EQ(wellFormed(text), text);
    }
}

TEST(NextCodePointTest, ReadsOneCodePointAndMovesBehindIt) {
    const std::string_view text = "a한\xFF";
    std::size_t at = 0;

    EXPECT_EQ(nextCodePoint(text, at), 'a');
    EXPECT_EQ(at, 1U);
    EXPECT_EQ(nextCodePoint(text, at), 0xD55C);
    EXPECT_EQ(at, 4U);
    EXPECT_LT(nextCodePoint(text, at), 0);
    EXPECT_EQ(at, 5U);
}

/// Texts that are long and odd. What reads one of them must not slow down with the square of
/// its length.
class LongTextTest : public testing::TestWithParam<std::string_view> {
protected:
    std::string text = repeated(GetParam(), 100000);
};

TEST_P(LongTextTest, IsCountedAndCut) {
    const auto count = characterCount(text);

    EXPECT_GE(count, 1U);
    EXPECT_EQ(firstCharacters(text, count), text);
    EXPECT_LE(characterCount(firstCharacters(text, count / 2)), count / 2);
}

TEST_P(LongTextTest, IsTrimmed) {
    const auto once = trimmed(text, TrimSet::whitespacesAndNewlines);

    EXPECT_EQ(trimmed(once, TrimSet::whitespacesAndNewlines), once);
}

TEST_P(LongTextTest, IsLowerCased) { EXPECT_EQ(lowercased(lowercased(text)), lowercased(text)); }

TEST_P(LongTextTest, IsSearchedForAPieceOfItself) {
    EXPECT_TRUE(containsCharacters(text, text));
    EXPECT_FALSE(containsCharacters(text, "no such words"));
    EXPECT_FALSE(containsCharacters(text, text.substr(0, text.size() / 2).append("x")));
    // Whether a piece is a whole character does not depend on how often it stands there.
    EXPECT_EQ(containsCharacters(std::string{"x"}.append(text), GetParam()),
              containsCharacters(std::string{"x"}.append(repeated(GetParam(), 4)), GetParam()));
}

TEST_P(LongTextTest, IsMadeWellFormed) {
    EXPECT_EQ(isWellFormed(text), isWellFormed(GetParam()));
    EXPECT_TRUE(isWellFormed(wellFormed(text)));
}

TEST_P(LongTextTest, IsReplacedPieceByPiece) {
    EXPECT_EQ(replacingAll(text, GetParam(), "y"), repeated("y", 100000));
}

INSTANTIATE_TEST_SUITE_P(Odd, LongTextTest,
                         testing::Values("a", "é", "\u0301", "\u0316\u0301", "e\u0301", " ", "\t",
                                         "\r\n", "\r", "\x01", "\x7F", "\u200F", "\u202E", "\u200D",
                                         "Σ", "Σ'", "ς", "İ", "👩‍👩‍👧", "🇩🇪", "🇩", "%",
                                         "%C3", "\xFF", "\xE2\x82", "\x80", "\u1100", "\u0E33"));

}  // namespace
}  // namespace orvu
