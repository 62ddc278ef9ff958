#include "foundation/text/Regex.h"

#include "foundation/RandomText.h"

#include <gtest/gtest.h>

namespace orvu {
namespace {

using enum Regex::LetterCase;

TEST(RegexTest, AMatchAnywhereIsFound) {
    const Regex digits{R"(\d{2})", significant};

    EXPECT_EQ(digits.isFoundIn("a 12 b"), true);
    EXPECT_EQ(digits.isFoundIn("12"), true);
    EXPECT_EQ(digits.isFoundIn("1 2"), false);
    EXPECT_EQ(digits.isFoundIn(""), false);
}

TEST(RegexTest, LetterCaseCountsUnlessItIsIgnored) {
    EXPECT_EQ((Regex{"abc", significant}.isFoundIn("xABCx")), false);
    EXPECT_EQ((Regex{"abc", ignored}.isFoundIn("xABCx")), true);
    EXPECT_EQ((Regex{"é", ignored}.isFoundIn("É")), true);
}

TEST(RegexTest, BlanksAndDigitsAreThoseOfEveryScript) {
    EXPECT_EQ((Regex{R"(\s)", significant}.isFoundIn("\u00A0")), true);
    EXPECT_EQ((Regex{R"(\s)", significant}.isFoundIn("\u3000")), true);
    EXPECT_EQ((Regex{R"(\d)", significant}.isFoundIn("٣")), true);
}

TEST(RegexTest, ASignOfSeveralBytesIsOneSign) {
    const Regex one{"^.$", significant};

    EXPECT_EQ(one.isFoundIn("é"), true);
    EXPECT_EQ(one.isFoundIn("👩"), true);
    EXPECT_EQ(one.isFoundIn("ab"), false);
}

TEST(RegexTest, ACopyOutlivesWhatItWasCopiedFrom) {
    auto first = std::make_unique<Regex>("b", significant);
    const Regex copy = *first;
    first.reset();

    EXPECT_EQ(copy.isFoundIn("abc"), true);
}

TEST(RegexTest, BytesThatAreNoUtf8AreSearchedAllTheSame) {
    const Regex pattern{"a\uFFFDb", significant};

    EXPECT_EQ(pattern.isFoundIn("xa\xFF"
                                "bx"),
              true);
    EXPECT_EQ(pattern.isFoundIn(std::string_view{"a\0b", 3}), false);
    EXPECT_EQ((Regex{"b$", significant}.isFoundIn(std::string_view{"a\0b", 3})), true);
}

TEST(RegexTest, ASearchWithoutEndIsGivenUp) {
    const Regex hopeless{"(a+)+b", significant};

    EXPECT_EQ(hopeless.isFoundIn(repeated("a", 40)), std::nullopt);
    EXPECT_EQ(hopeless.isFoundIn("aab"), true) << "the pattern itself is sound";
}

}  // namespace
}  // namespace orvu
