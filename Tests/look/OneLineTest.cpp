#include "look/text/OneLine.h"

#include "foundation/RandomText.h"
#include "foundation/text/Text.h"

#include <gtest/gtest.h>

namespace orvu {
namespace {

TEST(OneLineTest, PlainTextStaysAsItIs) {
    EXPECT_EQ(oneLine("On bees <b>& maps</b>", 100), "On bees <b>& maps</b>");
    EXPECT_EQ(oneLine("خرائط النحل", 100), "خرائط النحل");
    EXPECT_EQ(oneLine("", 100), "");
}

TEST(OneLineTest, LineEndsAndControlsBecomeOneSpace) {
    EXPECT_EQ(oneLine("\n one\r\n\ttwo\x1B[0m\u2028three\u0085four \n", 100),
              "one two [0m three four");
    EXPECT_EQ(oneLine(std::string_view{"a\0b", 3}, 100), "a b");
    EXPECT_EQ(oneLine("\n\t \r", 100), "");
}

TEST(OneLineTest, LongTextIsCutAtTheLimitOfCodePoints) {
    EXPECT_EQ(oneLine("äöü", 3), "äöü");
    EXPECT_EQ(oneLine("äöüß", 3), "äöü…");
}

TEST(OneLineTest, OneCharacterOfEndlessMarksIsCutToo) {
    std::string marks = "e";
    for (int time = 0; time < 10'000; ++time) marks += "\u0301";

    EXPECT_LT(oneLine(marks, 50).size(), 120U);
}

TEST(OneLineTest, AnyBytesGiveOneWellFormedLineWithinTheLimit) {
    RandomText random{20251121};
    for (int time = 0; time < 2000; ++time) {
        const std::string line = oneLine(random.bytes(200), 60);

        ASSERT_TRUE(isWellFormed(line));
        ASSERT_EQ(line.find_first_of(std::string_view{"\0\n\r\t", 4}), std::string::npos);
        ASSERT_LE(line.size(), 4U * 61U);
    }
}

}  // namespace
}  // namespace orvu
