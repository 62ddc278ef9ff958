#include "pagetools/ReaderText.h"

#include "support/StoreWorld.h"

namespace orvu {
namespace {

using Role = ReaderRole;
using Weight = ReaderStyle::Weight;
using Pieces = std::vector<ReaderPiece>;

ReaderArticle article(std::vector<ReaderArticle::Block> blocks) {
    return {url("https://a.example/"), "Title", "a.example", std::move(blocks), 4};
}

TEST(ReaderTextTest, MetaLineNamesTheSiteInCapitalsAndTheMinutes) {
    EXPECT_EQ(readerMeta(article({})), "A.EXAMPLE · 4 MIN");
}

TEST(ReaderTextTest, MetaLineWithoutASiteBeginsWithTheDot) {
    auto local = article({});
    local.site = "";

    EXPECT_EQ(readerMeta(local), " · 4 MIN");
}

TEST(ReaderTextTest, CapitalsKnowAllAlphabets) {
    auto foreign = article({});
    foreign.site = "straße.приклад";

    EXPECT_EQ(readerMeta(foreign), "STRASSE.ПРИКЛАД · 4 MIN");
}

TEST(ReaderTextTest, ArticleWithoutBlocksShowsMetaLineAndTitle) {
    EXPECT_EQ(readerPieces(article({})),
              (Pieces{{Role::meta, "A.EXAMPLE · 4 MIN"}, {Role::title, "Title"}}));
}

TEST(ReaderTextTest, BlocksFollowInTheirOrder) {
    const auto pieces = readerPieces(article({{.kind = "h1", .text = "a"},
                                              {.kind = "h2", .text = "b"},
                                              {.kind = "h3", .text = "c"},
                                              {.kind = "li", .text = "d"},
                                              {.kind = "blockquote", .text = "e"},
                                              {.kind = "p", .text = "f"},
                                              {.kind = "table", .text = "g"}}));

    EXPECT_EQ((Pieces{pieces.begin() + 2, pieces.end()}), (Pieces{{Role::heading, "a"},
                                                                  {Role::heading, "b"},
                                                                  {Role::subheading, "c"},
                                                                  {Role::item, "d"},
                                                                  {Role::quote, "e"},
                                                                  {Role::paragraph, "f"},
                                                                  {Role::paragraph, "g"}}));
}

TEST(ReaderTextTest, EachPieceRunsAsItsOwnTextDoes) {
    const auto pieces = readerPieces(article({{.kind = "p", .text = "שלום"},
                                              {.kind = "li", .text = "1. مرحبا"},
                                              {.kind = "p", .text = "x"}}));

    EXPECT_TRUE(pieces[2].isLeftward);
    EXPECT_TRUE(pieces[3].isLeftward);
    EXPECT_FALSE(pieces[4].isLeftward);
}

TEST(ReaderTextTest, NulIsLeftOut) {
    EXPECT_EQ(readerPieces(article({{.kind = "p", .text = std::string{"a\0b", 3}}})).back().text,
              "ab");
}

TEST(ReaderTextTest, StylesFollowTheSize) {
    EXPECT_EQ(ReaderStyle::of(Role::title, 20),
              (ReaderStyle{
                  .fontSize = 40, .weight = Weight::semibold, .letterSpacing = -0.5, .above = 18}));
    EXPECT_EQ(ReaderStyle::of(Role::heading, 20),
              (ReaderStyle{.fontSize = 27, .weight = Weight::semibold, .above = 30}));
    EXPECT_EQ(ReaderStyle::of(Role::subheading, 20),
              (ReaderStyle{.fontSize = 22, .weight = Weight::semibold, .above = 26}));
    EXPECT_EQ(ReaderStyle::of(Role::paragraph, 20),
              (ReaderStyle{.fontSize = 20, .above = 18, .lineSpacing = 10}));
    EXPECT_EQ(ReaderStyle::of(Role::item, 20),
              (ReaderStyle{.fontSize = 20, .above = 18, .lineSpacing = 9}));
    EXPECT_EQ(ReaderStyle::of(Role::quote, 20),
              (ReaderStyle{
                  .fontSize = 20, .isItalic = true, .isMuted = true, .above = 18, .indent = 16}));
}

TEST(ReaderTextTest, MetaLineIsTheSameAtEachSize) {
    EXPECT_EQ(ReaderStyle::of(Role::meta, 14), ReaderStyle::of(Role::meta, 26));
    EXPECT_EQ(ReaderStyle::of(Role::meta, 18), (ReaderStyle{.fontSize = 11,
                                                            .weight = Weight::medium,
                                                            .isMonospaced = true,
                                                            .isMuted = true,
                                                            .letterSpacing = 1}));
}

TEST(ReaderTextTest, SizesThatNothingCanDrawAreTakenForTheNearest) {
    EXPECT_EQ(ReaderStyle::of(Role::paragraph, -1e300).fontSize, 4);
    EXPECT_EQ(ReaderStyle::of(Role::paragraph, 1e300).fontSize, 200);
    EXPECT_EQ(ReaderStyle::of(Role::paragraph, 40).fontSize, 40);
}

TEST(ReaderTextTest, ColumnIsNoWiderThanItsMeasureAndKeepsItsPadding) {
    EXPECT_EQ(ReaderColumn::margin(1000), 160);
    EXPECT_EQ(ReaderColumn::margin(744), 32);
    EXPECT_EQ(ReaderColumn::margin(700), 32);
    EXPECT_EQ(ReaderColumn::margin(260), 32);
}

}  // namespace
}  // namespace orvu
