#include "foundation/json/JsonSurrogates.h"

#include "foundation/json/Json.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace orvu {
namespace {

TEST(JsonSurrogatesTest, WholeCharactersStay) {
    for (const std::string json : {R"("plain")", R"("\ud83d\ude00")", R"("\uD83D\uDE00x")",
                                   R"("\u00e9\n\"\\")", "", "\\", "\\u", "\\u12", "[]"}) {
        EXPECT_EQ(withLoneSurrogatesReplaced(json), json);
    }
}

TEST(JsonSurrogatesTest, HeadWithoutATailIsReplaced) {
    EXPECT_EQ(withLoneSurrogatesReplaced(R"("a\ud83d")"), R"("a\ufffd")");
    EXPECT_EQ(withLoneSurrogatesReplaced(R"("\ud83dx")"), R"("\ufffdx")");
    EXPECT_EQ(withLoneSurrogatesReplaced(R"("\ud83d\n")"), R"("\ufffd\n")");
    EXPECT_EQ(withLoneSurrogatesReplaced(R"("\ud83d\u0041")"), R"("\ufffd\u0041")");
}

TEST(JsonSurrogatesTest, TailWithoutAHeadIsReplaced) {
    EXPECT_EQ(withLoneSurrogatesReplaced(R"("\ude00")"), R"("\ufffd")");
    EXPECT_EQ(withLoneSurrogatesReplaced(R"("\ud83d\ude00\ude00")"), R"("\ud83d\ude00\ufffd")");
    EXPECT_EQ(withLoneSurrogatesReplaced(R"("\ud83d\ud83d\ude00")"), R"("\ufffd\ud83d\ude00")");
}

TEST(JsonSurrogatesTest, BackslashBeforeTheLettersMakesNoEscapeOfThem) {
    EXPECT_EQ(withLoneSurrogatesReplaced(R"("\\ud83d")"), R"("\\ud83d")");
    EXPECT_EQ(withLoneSurrogatesReplaced(R"("\\\ud83d")"), R"("\\\ufffd")");
}

TEST(JsonSurrogatesTest, WhatIsOnlyLikeAnEscapeStays) {
    for (const std::string json : {R"("\ud83")", R"("\ud83g")", R"("\u-83d")", R"("\U d83d")"}) {
        EXPECT_EQ(withLoneSurrogatesReplaced(json), json);
    }
}

TEST(JsonSurrogatesTest, AnyListOfUnitsBecomesReadable) {
    std::mt19937 random{20261121};
    const std::string units[]{R"(\ud83d)", R"(\ude00)", R"(\\)", R"(\")", "x", "é", R"(\u0000)"};
    for (int round = 0; round < 2000; ++round) {
        std::string json = "\"";
        for (auto count = random() % 12; count > 0; --count) json += units[random() % 7];
        json += '"';

        const std::string made = withLoneSurrogatesReplaced(json);

        const auto document = JsonDocument::parse(made);
        ASSERT_TRUE(document) << json << " became " << made;
        EXPECT_EQ(made.size(), json.size());
        EXPECT_EQ(withLoneSurrogatesReplaced(made), made);
    }
}

}  // namespace
}  // namespace orvu
