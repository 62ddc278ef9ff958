#include "foundation/text/DisplayHost.h"

#include "RandomText.h"
#include "foundation/text/Text.h"

#include <gtest/gtest.h>

namespace orvu {
namespace {

TEST(DisplayHostTest, PlainHostsStayAsTheyAre) {
    for (const auto host : {"", "a.example", "WWW.A.example", "127.0.0.1", "::1", "localhost",
                            "a-b.example", "xn.example", "a..b", ".", "a."}) {
        EXPECT_EQ(displayHost(host), host);
    }
}

TEST(DisplayHostTest, NamesOfOneScriptStandInTheirOwnLetters) {
    EXPECT_EQ(displayHost("xn--mnchen-3ya.example"), "münchen.example");
    EXPECT_EQ(displayHost("münchen.example"), "münchen.example");
    EXPECT_EQ(displayHost("XN--MNCHEN-3YA.example"), "münchen.example");
    EXPECT_EQ(displayHost("xn--wgv71a119e.example"), "日本語.example");
    EXPECT_EQ(displayHost("xn--e1afmkfd.example"), "пример.example");
    EXPECT_EQ(displayHost("xn--mgbh0fb.example"), "مثال.example");
}

TEST(DisplayHostTest, ANameThatMixesScriptsStandsAsItsServerIsAsked) {
    EXPECT_EQ(displayHost("p\u0430ypal.example"), "xn--pypal-4ve.example");  // a Cyrillic a
    EXPECT_EQ(displayHost("xn--pypal-4ve.example"), "xn--pypal-4ve.example");
}

TEST(DisplayHostTest, ANameThatOnlyLooksLatinStandsAsItsServerIsAsked) {
    // All letters are Cyrillic.
    const std::string shown = displayHost("\u0440\u0430\u0443\u0440\u0430\u04CF.example");

    EXPECT_TRUE(shown.starts_with("xn--")) << shown;
}

TEST(DisplayHostTest, WhatIsNoNameStaysAsItIs) {
    EXPECT_EQ(displayHost("xn--a-\u202E.example"), "xn--a-\u202E.example");
    EXPECT_EQ(displayHost("xn--.example"), "xn--.example");
}

TEST(DisplayHostTest, ALongHostLosesItsHeadAndNeverItsEnd) {
    std::string host;
    for (int i = 0; i < 40; ++i) host += "bank.example.";
    const std::string shown = displayHost(host + "evil.example");

    EXPECT_TRUE(shown.starts_with("….")) << shown;
    EXPECT_TRUE(shown.ends_with(".evil.example"));
    EXPECT_LT(shown.size(), 260U);
    EXPECT_TRUE(displayHost(std::string(5000, 'x')).ends_with("x"));
}

TEST(DisplayHostTest, AnyTextHasAShortForm) {
    RandomText random{11};
    for (int i = 0; i < 3000; ++i) {
        const std::string host = random.text(300);
        const std::string shown = displayHost(host);

        EXPECT_LE(shown.size(), 5 * 253U);
        EXPECT_EQ(displayHost(host), shown);
    }
}

}  // namespace
}  // namespace orvu
