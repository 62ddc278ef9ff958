#include "notch/AddressNotch.h"

#include "support/OwnNotch.h"
#include "support/StoreWorld.h"

#include <gtest/gtest.h>

namespace orvu {
namespace {

TEST(LooksLikeSiteTest, TextThatBeginsWithHttpIsASiteWhateverFollows) {
    EXPECT_TRUE(AddressNotch::looksLikeSite("http"));
    EXPECT_TRUE(AddressNotch::looksLikeSite("https://a.example/b c"));
    EXPECT_TRUE(AddressNotch::looksLikeSite("httpd not starting"));
    EXPECT_TRUE(AddressNotch::looksLikeSite(" \thttp "));
}

TEST(LooksLikeSiteTest, LetterCaseOfHttpCounts) {
    EXPECT_FALSE(AddressNotch::looksLikeSite("HTTP"));
    EXPECT_FALSE(AddressNotch::looksLikeSite("Http status codes"));
}

TEST(LooksLikeSiteTest, OtherTextNeedsAFullStopNotAtTheEnd) {
    EXPECT_TRUE(AddressNotch::looksLikeSite("a.example"));
    EXPECT_TRUE(AddressNotch::looksLikeSite(".a"));
    EXPECT_FALSE(AddressNotch::looksLikeSite("example"));
    EXPECT_FALSE(AddressNotch::looksLikeSite("example."));
    EXPECT_FALSE(AddressNotch::looksLikeSite("."));
    EXPECT_FALSE(AddressNotch::looksLikeSite(""));
}

TEST(LooksLikeSiteTest, OtherTextWithASpaceIsNone) {
    EXPECT_FALSE(AddressNotch::looksLikeSite("what is a.example"));
    EXPECT_TRUE(AddressNotch::looksLikeSite("  a.example \t"));
    EXPECT_TRUE(AddressNotch::looksLikeSite("a\tb.example"));
    EXPECT_FALSE(AddressNotch::looksLikeSite("a.example\n."));
}

TEST(AddressNotchTest, OpeningWithTextSetsItAndTellsOnce) {
    OwnNotch notch;
    const ChangeCounter changes{notch};

    notch.open("https://a.example/");

    EXPECT_TRUE(notch.isOpen());
    EXPECT_EQ(notch.query(), "https://a.example/");
    EXPECT_EQ(changes.count(), 1);
}

TEST(AddressNotchTest, ClosingKeepsTheText) {
    OwnNotch notch;
    notch.open("typed");

    notch.close();
    notch.open();

    EXPECT_EQ(notch.query(), "typed");
}

TEST(AddressNotchTest, WhatChangesNothingTellsNothing) {
    OwnNotch notch;
    notch.open("typed");
    const ChangeCounter changes{notch};

    notch.open();
    notch.open("typed");
    notch.setQuery("typed");

    EXPECT_EQ(changes.count(), 0);
}

}  // namespace
}  // namespace orvu
