#include "pagetools/ReaderExtraction.h"

#include "foundation/json/Json.h"
#include "support/StoreWorld.h"

#include <random>

namespace orvu {
namespace {

using Kind = ScriptResult::Kind;
using Pairs = std::vector<std::pair<std::string, std::string>>;

const ReaderExtraction::Page page{url("https://a.example/story"), "Tab", "a.example"};

/// What the script answers for a page of these blocks.
ScriptResult answer(const std::string& title, const Pairs& blocks) {
    JsonWriter writer;
    writer.beginObject().key("title").value(title).key("blocks").beginArray();
    for (const auto& [kind, text] : blocks) {
        writer.beginArray().value(kind).value(text).endArray();
    }
    writer.endArray().endObject();
    return {Kind::json, std::move(writer).finish().value()};
}

std::optional<ReaderArticle> articleOf(const std::string& json) {
    return ReaderExtraction::article({Kind::json, json}, page);
}

Pairs blocksOf(const ReaderArticle& article) {
    Pairs result;
    for (const auto& block : article.blocks) result.emplace_back(block.kind, block.text);
    return result;
}

int minutesOf(const Pairs& blocks) {
    return ReaderExtraction::article(answer("Title", blocks), page)->minutes;
}

std::string words(int count, const std::string& between = " ") {
    std::string text;
    for (int i = 0; i < count; ++i) text += "word" + between;
    return text;
}

TEST(ReaderExtractionTest, AnswerBecomesAnArticle) {
    const Pairs blocks{{"h2", "One"}, {"p", "Two and three"}, {"li", "4"}, {"blockquote", "5"}};

    const auto article = ReaderExtraction::article(answer("Title", blocks), page);

    ASSERT_TRUE(article);
    EXPECT_EQ(article->url, url("https://a.example/story"));
    EXPECT_EQ(article->title, "Title");
    EXPECT_EQ(article->site, "a.example");
    EXPECT_EQ(article->minutes, 1);
    EXPECT_EQ(blocksOf(*article), blocks);
}

TEST(ReaderExtractionTest, EachBlockHasAnIdentityOfItsOwn) {
    const auto answered = answer("Title", {{"p", "same"}, {"p", "same"}});

    const auto first = ReaderExtraction::article(answered, page);
    const auto second = ReaderExtraction::article(answered, page);

    EXPECT_NE(first->blocks[0].id, first->blocks[1].id);
    EXPECT_NE(first->blocks[0].id, second->blocks[0].id);
}

TEST(ReaderExtractionTest, ArticleWithoutBlocksIsOne) {
    const auto article = articleOf(R"({"title":"Empty","blocks":[]})");

    ASSERT_TRUE(article);
    EXPECT_TRUE(article->blocks.empty());
    EXPECT_EQ(article->minutes, 1);
}

TEST(ReaderExtractionTest, PageWithoutAnArticleGivesNone) {
    EXPECT_FALSE(articleOf("null"));
    EXPECT_FALSE(ReaderExtraction::article({Kind::failed, ""}, page));
    EXPECT_FALSE(ReaderExtraction::article({Kind::undefined, ""}, page));
}

TEST(ReaderExtractionTest, AnswersOfOtherTypesGiveNoArticle) {
    for (const auto* json :
         {"", "7", "true", R"("text")", "[]", R"([["p","text"]])", "{}", R"({"title":"T"})",
          R"({"title":"T","blocks":null})", R"({"title":"T","blocks":{}})",
          R"({"title":"T","blocks":"p"})", R"({"title":"T","blocks":["p","text"]})",
          R"({"title":"T","blocks":[["p","text"],null]})",
          R"({"title":"T","blocks":[["p","text"],["p",1]]})",
          R"({"title":"T","blocks":[["p",["text"]]]})",
          R"({"title":"T","blocks":[["p","text"]])"}) {
        EXPECT_FALSE(articleOf(json)) << json;
    }
    const std::string text = answer("T", {{"p", "text"}}).text;
    EXPECT_FALSE(ReaderExtraction::article({Kind::text, text}, page));
}

TEST(ReaderExtractionTest, ListsThatAreNoPairsAreSkipped) {
    const auto article =
        articleOf(R"({"title":"T","blocks":[[],["p"],["p","kept"],["p","x","y"],["li","too"]]})");

    ASSERT_TRUE(article);
    EXPECT_EQ(blocksOf(*article), (Pairs{{"p", "kept"}, {"li", "too"}}));
}

TEST(ReaderExtractionTest, WithoutATitleThatIsTextTheTabsTitleCounts) {
    EXPECT_EQ(articleOf(R"({"blocks":[]})")->title, "Tab");
    EXPECT_EQ(articleOf(R"({"title":null,"blocks":[]})")->title, "Tab");
    EXPECT_EQ(articleOf(R"({"title":{"a":1},"blocks":[]})")->title, "Tab");
    EXPECT_EQ(articleOf(R"({"title":"","blocks":[]})")->title, "");
}

TEST(ReaderExtractionTest, FirstHeadingEqualToTheTitleIsRemovedAndASecondStays) {
    const Pairs blocks{{"h1", "Title"}, {"h1", "Title"}, {"p", "text"}};

    const auto article = ReaderExtraction::article(answer("Title", blocks), page);

    EXPECT_EQ(blocksOf(*article), (Pairs{{"h1", "Title"}, {"p", "text"}}));
}

TEST(ReaderExtractionTest, OnlyAFirstBlockThatIsTheVerySameHeadingIsRemoved) {
    for (const Pairs& blocks : {Pairs{{"p", "x"}, {"h1", "Title"}}, Pairs{{"h2", "Title"}},
                                Pairs{{"h1", "title"}}, Pairs{{"h1", "Title "}}}) {
        const auto article = ReaderExtraction::article(answer("Title", blocks), page);

        EXPECT_EQ(blocksOf(*article), blocks);
    }
}

TEST(ReaderExtractionTest, FirstHeadingEqualToTheTabsTitleIsRemovedWhereThatCounts) {
    EXPECT_TRUE(articleOf(R"({"blocks":[["h1","Tab"]]})")->blocks.empty());
}

TEST(ReaderExtractionTest, ReadingTimeIsRoundedDownAndAtLeastAMinute) {
    EXPECT_EQ(minutesOf({{"p", words(229)}}), 1);
    EXPECT_EQ(minutesOf({{"p", words(230)}}), 1);
    EXPECT_EQ(minutesOf({{"p", words(459)}}), 1);
    EXPECT_EQ(minutesOf({{"p", words(460)}}), 2);
    EXPECT_EQ(minutesOf({{"p", words(689)}}), 2);
    EXPECT_EQ(minutesOf({{"p", words(690)}}), 3);
}

TEST(ReaderExtractionTest, WordsOfAllBlocksCountAndNoneIsJoinedWithTheNext) {
    EXPECT_EQ(minutesOf({{"h2", words(230)}, {"li", words(229) + "last"}}), 2);
}

TEST(ReaderExtractionTest, OnlyBlanksPartWords) {
    EXPECT_EQ(minutesOf({{"p", words(460, "  ")}}), 2);
    EXPECT_EQ(minutesOf({{"p", words(460, "\n")}}), 1);
    EXPECT_EQ(minutesOf({{"p", words(460, "\t")}}), 1);
    EXPECT_EQ(minutesOf({{"p", words(460, "\u00a0")}}), 1);
    EXPECT_EQ(minutesOf({{"p", words(460, "\u3000")}}), 1);
}

TEST(ReaderExtractionTest, RemovedHeadingDoesNotCountForTheReadingTime) {
    const std::string title = words(459) + "last";

    EXPECT_EQ(ReaderExtraction::article(answer(title, {{"h1", title}, {"p", "x"}}), page)->minutes,
              1);
}

/// The words of a text, counted in another way: by its pieces.
std::size_t pieces(const std::string& text) {
    std::size_t count = 0;
    std::size_t begin = 0;
    while (begin <= text.size()) {
        const auto end = std::min(text.find(' ', begin), text.size());
        if (end > begin) ++count;
        begin = end + 1;
    }
    return count;
}

TEST(ReaderExtractionTest, AnyBlocksKeepTheirTextsAndGiveTheMinutesOfTheirPieces) {
    std::mt19937 random{7};
    const std::vector<std::string> parts{" ", "  ",  "word ",      "\n", "\t",
                                         "é", "字 ", "\U0001F600", "\"", "\\"};
    const std::vector<std::string> kinds{"h1", "h2", "h3", "p", "li", "blockquote", "table"};
    for (int round = 0; round < 300; ++round) {
        Pairs blocks;
        std::size_t count = 0;
        for (auto each = random() % 40; each > 0; --each) {
            std::string text;
            for (auto part = random() % 200; part > 0; --part) {
                text += parts[random() % parts.size()];
            }
            count += pieces(text);
            blocks.emplace_back(kinds[random() % kinds.size()], text);
        }

        const auto article = ReaderExtraction::article(answer("No block is this", blocks), page);

        ASSERT_TRUE(article);
        EXPECT_EQ(blocksOf(*article), blocks);
        EXPECT_EQ(article->minutes, std::max<std::size_t>(1, count / 230));
    }
}

}  // namespace
}  // namespace orvu
