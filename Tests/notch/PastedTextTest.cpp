#include "notch/PastedText.h"

#include "foundation/RandomText.h"

#include <gtest/gtest.h>

namespace orvu {
namespace {

TEST(PastedTextTest, TextOfOneLineStaysAsItIs) {
    EXPECT_EQ(pastedText("  two  words\t"), "  two  words\t");
    EXPECT_EQ(pastedText(""), "");
}

TEST(PastedTextTest, LineEndAtTheEndGoes) {
    EXPECT_EQ(pastedText("https://a.example/\n"), "https://a.example/");
    EXPECT_EQ(pastedText("\r\n word \r\n\r\n"), "word");
    EXPECT_EQ(pastedText("\n\r\n"), "");
}

TEST(PastedTextTest, AddressThatWasBrokenOverLinesIsJoined) {
    EXPECT_EQ(pastedText("https://a.example/a-long-\n  path?and=\r\n  more"),
              "https://a.example/a-long-path?and=more");
}

TEST(PastedTextTest, LinesOfOtherTextAreParted) {
    EXPECT_EQ(pastedText("bees\nmaps"), "bees maps");
    EXPECT_EQ(pastedText("see https://a.example/\nfor more"), "see https://a.example/ for more");
    EXPECT_EQ(pastedText("https://a.example/\nand more"), "https://a.example/ and more");
}

TEST(PastedTextTest, NoLineEndIsEverLeft) {
    RandomText random{7};
    for (int time = 0; time < 2000; ++time) {
        const std::string text = pastedText(random.text(30));

        ASSERT_EQ(text.find_first_of("\r\n"), std::string::npos);
    }
}

}  // namespace
}  // namespace orvu
