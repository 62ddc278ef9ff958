#include "search/answers/ResultsPage.h"

#include "foundation/json/Json.h"
#include "foundation/json/JsonSurrogates.h"
#include "foundation/RandomText.h"
#include "foundation/text/Text.h"
#include "support/FoundResults.h"
#include "support/StoreWorld.h"

namespace orvu {
namespace {

using Kind = ScriptResult::Kind;
using Results = std::vector<FoundResult>;

Results resultsOf(const std::string& json) { return ResultsPage::results({Kind::json, json}); }

/// A list of texts as the script writes it.
std::string entry(std::initializer_list<std::string_view> texts) {
    JsonWriter writer;
    writer.beginArray();
    for (const auto text : texts) writer.value(text);
    writer.endArray();
    return std::move(writer).finish().value();
}

/// The one result of an entry of these texts.
FoundResult resultOf(std::initializer_list<std::string_view> texts) {
    const auto results = resultsOf("[" + entry(texts) + "]");
    EXPECT_EQ(results.size(), 1U);
    return results.at(0);
}

TEST(ResultsPageTest, EachEntryBecomesAResultInItsPlace) {
    const std::string first = entry({"One", "https://a.example/1", "First", "https://a.example"});
    const std::string second = entry({"Two", "https://b.example/2?q=é", "", "b.example/sub"});

    EXPECT_EQ(resultsOf("[" + first + "," + second + "]"),
              (Results{{"One", url("https://a.example/1"), "First", url("https://a.example")},
                       {"Two", url("https://b.example/2?q=é"), "", url("b.example/sub")}}));
}

TEST(ResultsPageTest, EmptyListHasNoResults) { EXPECT_EQ(resultsOf("[]"), Results{}); }

TEST(ResultsPageTest, AnswerThatIsNoListOfListsHasNoResults) {
    const std::string good = entry({"One", "https://a.example/1", "First", ""});
    for (const std::string& json :
         {std::string{}, std::string{"null"}, std::string{"true"}, std::string{"1"},
          std::string{"{}"}, std::string{R"("text")"},
          std::string{R"(["One","https://a.example"])"}, good, "{\"0\":" + good + "}",
          "[" + good + ",null]", "[1," + good + "]", "[" + good + ",{}]",
          "[" + good + R"(,"text"])", "[" + good, "[" + good + "] x"}) {
        EXPECT_EQ(resultsOf(json), Results{}) << json;
    }
}

TEST(ResultsPageTest, OnlyAnAnswerInJsonCounts) {
    const std::string json = "[" + entry({"One", "https://a.example/1", "First", ""}) + "]";

    EXPECT_EQ(resultsOf(json).size(), 1U);
    for (const Kind kind : {Kind::text, Kind::undefined, Kind::failed}) {
        EXPECT_EQ(ResultsPage::results({kind, json}), Results{});
    }
}

TEST(ResultsPageTest, EntryOfFewerThanThreeIsLeftOut) {
    const std::string good = entry({"Good", "https://a.example/", "Text"});

    EXPECT_EQ(resultsOf(R"([[],["One"],["One","https://a.example/1"],)" + good + "]"),
              (Results{{"Good", url("https://a.example/"), "Text", std::nullopt}}));
}

TEST(ResultsPageTest, EntryWithoutATitleThatIsTextIsLeftOut) {
    for (const std::string title : {R"("")", "null", "1", "true", R"(["One"])", R"({"a":"One"})"}) {
        EXPECT_EQ(resultsOf("[[" + title + R"(,"https://a.example/","Text",""]])"), Results{})
            << title;
    }
    EXPECT_EQ(resultOf({" ", "https://a.example/", ""}).title, " ");
}

TEST(ResultsPageTest, EntryWithoutAnAddressThatParsesIsLeftOut) {
    for (const std::string address :
         {R"("")", "null", "1", R"(["https://a.example/"])", R"("https://a.example/a b")",
          R"("https://[")", R"("https://a.example:port/")", R"("https://a.example/\u0000")",
          R"("https://a.example/\ufeff")"}) {
        EXPECT_EQ(resultsOf(R"([["One",)" + address + R"(,"Text",""]])"), Results{}) << address;
    }
}

TEST(ResultsPageTest, SnippetThatIsNoTextIsEmpty) {
    for (const std::string snippet : {"null", "1", "true", R"(["Text"])", R"({"a":"Text"})"}) {
        EXPECT_EQ(resultsOf(R"([["One","https://a.example/",)" + snippet + "]]"),
                  (Results{{"One", url("https://a.example/"), "", std::nullopt}}))
            << snippet;
    }
}

TEST(ResultsPageTest, ShownAddressThatCantBeUsedIsNone) {
    for (const std::string shown : {R"("")", "null", "1", R"(["a.example"])", R"("a b")",
                                    R"("https://[")", R"("a.example\u200e")"}) {
        EXPECT_EQ(resultsOf(R"([["One","https://a.example/","Text",)" + shown + "]]"),
                  (Results{{"One", url("https://a.example/"), "Text", std::nullopt}}))
            << shown;
    }
}

TEST(ResultsPageTest, ShownAddressWithoutASchemeStaysAsItStands) {
    const auto shown = resultOf({"One", "https://b.example/", "", "a.example/sub"}).shown;

    EXPECT_EQ(shown, url("a.example/sub"));
    EXPECT_EQ(shown->host(), std::nullopt);
    EXPECT_EQ(shown->path(), "a.example/sub");
}

TEST(ResultsPageTest, WhatStandsBehindTheFourthIsNotLookedAt) {
    EXPECT_EQ(
        resultsOf(R"([["One","https://a.example/","Text","a.example",null,[1],"b.example"]])"),
        (Results{{"One", url("https://a.example/"), "Text", url("a.example")}}));
}

TEST(ResultsPageTest, NoMoreResultsAreTakenThanTheScriptGives) {
    std::string json = R"([["","https://a.example/",""])";
    for (int i = 1; i <= 8; ++i) {
        json += "," + entry({std::to_string(i), "https://a.example/", ""});
    }

    const auto results = resultsOf(json + "]");

    ASSERT_EQ(results.size(), ResultsPage::maxResults);
    EXPECT_EQ(results.front().title, "1");
    EXPECT_EQ(results.back().title, "6");
}

TEST(ResultsPageTest, LongTextsAreCut) {
    const auto result = resultOf(
        {repeated("a", 1000000), "https://a.example/", repeated("é", 1000000), "a.example"});

    EXPECT_EQ(result.title, repeated("a", 1000));
    EXPECT_EQ(result.snippet, repeated("é", 360));
}

TEST(ResultsPageTest, CutLeavesNoHalfCharacter) {
    const std::string face = "\U0001F600";
    const std::string title = repeated("a", 999);
    const std::string snippet = repeated("字", 359);

    EXPECT_EQ(resultOf({title + face, "https://a.example/", snippet + face}),
              (FoundResult{title, url("https://a.example/"), snippet, std::nullopt}));
    EXPECT_EQ(resultOf({repeated(face, 501), "https://a.example/", repeated(face, 181)}),
              (FoundResult{repeated(face, 500), url("https://a.example/"), repeated(face, 180),
                           std::nullopt}));
}

TEST(ResultsPageTest, TextsOfTheLargestSizeStayWhole) {
    const std::string title = repeated("é", 1000);
    const std::string snippet = repeated("\U0001F600", 180);

    EXPECT_EQ(resultOf({title, "https://a.example/", snippet}),
              (FoundResult{title, url("https://a.example/"), snippet, std::nullopt}));
}

TEST(ResultsPageTest, HalfCharactersThatThePageMadeAreReplacements) {
    const std::string json =
        withLoneSurrogatesReplaced(R"([["\ud83d","https://a.example/","x\ude00y",""]])");

    EXPECT_EQ(resultsOf(json),
              (Results{{"\uFFFD", url("https://a.example/"), "x\uFFFDy", std::nullopt}}));
}

TEST(ResultsPageTest, DeepAndWideAnswersAreReadToTheirEnd) {
    EXPECT_EQ(resultsOf(repeated("[", 100000) + repeated("]", 100000)), Results{});
    EXPECT_EQ(resultsOf("[[]" + repeated(",[]", 300000) + "]"), Results{});
    EXPECT_EQ(resultsOf("[[" + repeated("1,", 300000) + "1]]"), Results{});
    EXPECT_EQ(resultsOf("[[" + repeated("[", 1000) + repeated("]", 1000) + R"(,"a:b",""]])"),
              Results{});
}

/// Entries at random, good ones and bad ones.
std::string randomEntry(RandomText& random) {
    JsonWriter writer;
    writer.beginArray();
    for (auto left = random.below(6); left > 0; --left) {
        switch (random.below(5)) {
            case 0:
                writer.value(random.text(800));
                break;
            case 1:
                writer.value("https://a.example/" + random.text(2));
                break;
            case 2:
                writer.value(random.bytes(30));
                break;
            case 3:
                writer.value(std::int64_t{7});
                break;
            default:
                writer.value(std::string_view{"a.example"});
        }
    }
    writer.endArray();
    return std::move(writer).finish().value();
}

/// The number of units of UTF-16 in a text.
std::size_t units(std::string_view text) {
    std::size_t count = 0;
    for (std::size_t at = 0; at < text.size();) count += nextCodePoint(text, at) > 0xFFFF ? 2 : 1;
    return count;
}

TEST(ResultsPageTest, AnyAnswerGivesNoMoreThanItHoldsAndOnlyWholeResults) {
    RandomText random{11};
    std::size_t found = 0;
    for (int round = 0; round < 2000; ++round) {
        const auto count = random.below(10);
        std::string json = "[";
        for (std::size_t i = 0; i < count; ++i) json += (i > 0 ? "," : "") + randomEntry(random);

        const auto results = resultsOf(json + "]");

        EXPECT_LE(results.size(), std::min(count, ResultsPage::maxResults));
        for (const FoundResult& each : results) {
            EXPECT_NE(each.title, "");
            EXPECT_TRUE(isWellFormed(each.title) && isWellFormed(each.snippet));
            EXPECT_LE(units(each.title), ResultsPage::maxTitle);
            EXPECT_LE(units(each.snippet), ResultsPage::maxSnippet);
            EXPECT_EQ(Url::parse(each.url.absoluteString()), each.url);
        }
        found += results.size();
    }
    EXPECT_GT(found, 1000U);
}

TEST(ResultsPageTest, BrokenAnswersHaveNoResultsOrWholeOnes) {
    RandomText random{12};
    const std::string good = "[" + entry({"One", "https://a.example/", "Text", "a.example"}) + "]";
    for (int round = 0; round < 5000; ++round) {
        std::string json = good;
        json[random.below(json.size())] = static_cast<char>(random.below(256));

        const auto results = resultsOf(json);

        EXPECT_LE(results.size(), 1U);
        for (const FoundResult& each : results) {
            EXPECT_NE(each.title, "");
            EXPECT_TRUE(isWellFormed(each.title + each.snippet));
        }
    }
}

}  // namespace
}  // namespace orvu
