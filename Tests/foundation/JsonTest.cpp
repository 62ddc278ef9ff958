#include "foundation/json/Json.h"

#include "RandomText.h"
#include "foundation/text/Text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace orvu {
namespace {

/// A record of the smallest kind.
struct Word {
    std::string text;

    static std::optional<Word> decode(const JsonValue& value) {
        const auto text = value.field("text").and_then(&JsonValue::text);
        return text ? std::optional{Word{std::string{*text}}} : std::nullopt;
    }
    void encode(JsonWriter& writer) const {
        writer.beginObject().key("text").value(text).endObject();
    }
    friend bool operator==(const Word&, const Word&) = default;
};

std::string written(const std::string& text) {
    return std::move(JsonWriter{}.value(text)).finish().value();
}

/// The text that stands alone in a document.
std::optional<std::string> readText(std::string_view json) {
    const auto document = JsonDocument::parse(json);
    if (!document) return std::nullopt;
    const auto text = document->root().text();
    return text ? std::optional{std::string{*text}} : std::nullopt;
}

std::optional<std::int64_t> readInteger(std::string_view json) {
    const auto document = JsonDocument::parse(json);
    return document ? document->root().integer() : std::nullopt;
}

/// The texts of the list that is a document; nothing as `JsonValue::texts` says.
std::optional<std::vector<std::string>> readTexts(std::string_view json) {
    const auto document = JsonDocument::parse(json);
    const auto texts = document ? document->root().texts() : std::nullopt;
    if (!texts) return std::nullopt;
    return std::vector<std::string>{texts->begin(), texts->end()};
}

TEST(JsonWriterTest, WritesCompactDocuments) {
    JsonWriter writer;
    writer.beginArray().beginObject().key("a").value(std::int64_t{1});
    writer.key("b").beginArray().endArray().key("c").value(true).endObject();
    writer.value(false).value("x").value(0.5).endArray();

    EXPECT_EQ(std::move(writer).finish(), R"([{"a":1,"b":[],"c":true},false,"x",0.5])");
}

TEST(JsonValueTest, ReadsAListOfTextsWhole) {
    EXPECT_EQ(readTexts(R"([])"), std::vector<std::string>{});
    EXPECT_EQ(readTexts(R"(["a","","é"])"), (std::vector<std::string>{"a", "", "é"}));
}

TEST(JsonValueTest, AListWithAnythingButTextsIsNoListOfTexts) {
    EXPECT_EQ(readTexts(R"(["a",1])"), std::nullopt);
    EXPECT_EQ(readTexts(R"(["a",null])"), std::nullopt);
    EXPECT_EQ(readTexts(R"([["a"]])"), std::nullopt);
    EXPECT_EQ(readTexts(R"("a")"), std::nullopt);
    EXPECT_EQ(readTexts(R"({"a":"b"})"), std::nullopt);
}

TEST(JsonWriterTest, EscapesQuotesBackslashesAndControlCharacters) {
    EXPECT_EQ(written("a\"b\\c\n\x01/é"), "\"a\\\"b\\\\c\\u000a\\u0001/é\"");
    EXPECT_EQ(written(std::string{"\0", 1}), "\"\\u0000\"");
}

TEST(JsonWriterTest, BytesThatAreNoUtf8BecomeReplacements) {
    EXPECT_EQ(written("a\xFFz"), "\"a\uFFFDz\"");
    EXPECT_EQ(readText(written("\xFF\"")), "\uFFFD\"");
}

TEST(JsonWriterTest, IdentifiersAreWrittenInCapitals) {
    const auto id = *Uuid::parse("0badcafe-0000-4000-8000-00000000f00d");

    EXPECT_EQ(std::move(JsonWriter{}.value(id)).finish(),
              "\"0BADCAFE-0000-4000-8000-00000000F00D\"");
}

TEST(JsonWriterTest, DatesAreSecondsSinceTheBeginningOf2001) {
    EXPECT_EQ(std::move(JsonWriter{}.value(Date{780000000.25})).finish(), "780000000.25");
}

TEST(JsonWriterTest, ANumberThatIsNotFiniteRefusesTheWholeText) {
    for (const double number :
         {std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
          std::numeric_limits<double>::quiet_NaN()}) {
        JsonWriter writer;
        writer.beginArray().value(number).endArray();

        EXPECT_EQ(std::move(writer).finish(), std::nullopt);
    }
}

TEST(JsonWriterTest, EveryFiniteNumberIsReadBackExactly) {
    std::mt19937_64 random{9};
    std::vector<double> numbers{0.0,
                                -0.0,
                                0.1,
                                1e20,
                                1e-300,
                                5e-324,
                                780000000.123456,
                                std::numeric_limits<double>::max(),
                                std::numeric_limits<double>::lowest()};
    while (numbers.size() < 3000) {
        const auto number = std::bit_cast<double>(random());
        if (std::isfinite(number)) numbers.push_back(number);
    }

    for (const double number : numbers) {
        const auto text = std::move(JsonWriter{}.value(number)).finish().value();
        const auto document = JsonDocument::parse(text);

        ASSERT_TRUE(document) << text;
        EXPECT_EQ(document->root().number(), number) << text;
    }
}

TEST(JsonWriterTest, ADateFarOutOfReasonIsReadBack) {
    const Date date{-5.6228102019512557568e19};

    const auto document = JsonDocument::parse(std::move(JsonWriter{}.value(date)).finish().value());

    ASSERT_TRUE(document);
    EXPECT_EQ(document->root().date(), date);
}

TEST(JsonWriterTest, EveryTextIsReadBack) {
    RandomText random{10};
    for (int i = 0; i < 3000; ++i) {
        const auto text = random.text(20);

        EXPECT_EQ(readText(written(text)), text) << testing::PrintToString(text);
    }
}

TEST(JsonWriterTest, AnyBytesAreReadBackAsTheirWellFormedText) {
    RandomText random{11};
    for (int i = 0; i < 3000; ++i) {
        const auto bytes = random.bytes(20);

        EXPECT_EQ(readText(written(bytes)), wellFormed(bytes)) << testing::PrintToString(bytes);
    }
}

TEST(JsonValueTest, AnIntegerMayBeWrittenWithAFractionOfZero) {
    EXPECT_EQ(readInteger("2"), 2);
    EXPECT_EQ(readInteger("2.0"), 2);
    EXPECT_EQ(readInteger("2e3"), 2000);
    EXPECT_EQ(readInteger("-7.0"), -7);
    EXPECT_EQ(readInteger("9223372036854775807"), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(readInteger("-9223372036854775808"), std::numeric_limits<std::int64_t>::min());
}

TEST(JsonValueTest, WhatIsNoIntegerOf64BitsIsNone) {
    for (const std::string_view json : {"2.5", "9223372036854775808", "18446744073709551615",
                                        "1e19", "-1e19", "1e300", "\"2\"", "true", "null", "[2]"}) {
        EXPECT_EQ(readInteger(json), std::nullopt) << json;
    }
}

TEST(JsonValueTest, EachReaderTakesItsOwnTypeOnly) {
    const auto document = JsonDocument::parse(R"({"t":"x","n":1,"b":true,"a":[1],"o":{}})");
    ASSERT_TRUE(document);
    const auto field = [&](std::string_view name) { return document->root().field(name).value(); };

    for (const std::string_view name : {"n", "b", "a", "o"}) EXPECT_FALSE(field(name).text());
    for (const std::string_view name : {"t", "b", "a", "o"}) EXPECT_FALSE(field(name).number());
    for (const std::string_view name : {"t", "n", "a", "o"}) EXPECT_FALSE(field(name).boolean());
    for (const std::string_view name : {"t", "n", "b", "o"}) EXPECT_FALSE(field(name).array());
    for (const std::string_view name : {"t", "n", "b", "a"}) EXPECT_FALSE(field(name).isObject());
    for (const std::string_view name : {"t", "n", "b", "a", "o"}) {
        EXPECT_FALSE(field(name).uuid()) << name;
        EXPECT_FALSE(field(name).field("x")) << name;
    }
    EXPECT_EQ(field("t").text(), "x");
    EXPECT_EQ(field("n").number(), 1.0);
    EXPECT_EQ(field("n").date(), Date{1});
    EXPECT_EQ(field("b").boolean(), true);
    EXPECT_EQ(field("a").array()->size(), 1U);
    EXPECT_TRUE(field("o").isObject());
}

TEST(JsonValueTest, NullIsAnAbsentField) {
    const auto document = JsonDocument::parse(R"({"a":null,"b":0})");

    ASSERT_TRUE(document);
    EXPECT_FALSE(document->root().field("a"));
    EXPECT_TRUE(document->root().field("b"));
    EXPECT_FALSE(document->root().field("c"));
}

TEST(JsonValueTest, FieldNamesAreExact) {
    const auto document = JsonDocument::parse(R"({"Title":1,"title ":2,"t\u0069tle2":3})");

    ASSERT_TRUE(document);
    EXPECT_FALSE(document->root().field("title"));
    EXPECT_EQ(document->root().field("title2").and_then(&JsonValue::integer), 3);
}

TEST(JsonValueTest, AnEmptyTextIsNoAddress) {
    const auto document = JsonDocument::parse(R"(["", "https://a.b", "a b"])");

    ASSERT_TRUE(document);
    const auto entries = document->root().array().value();
    EXPECT_EQ(entries[0].url(), std::nullopt);
    EXPECT_EQ(entries[1].url(), Url::parse("https://a.b"));
    EXPECT_EQ(entries[2].url(), std::nullopt);
}

TEST(JsonDocumentTest, WhatIsNoJsonGivesNoDocument) {
    for (const std::string_view bad :
         {"", " ", "garbage", "[", "[1,]", "{\"a\":}", "[1] 2", "'a'", "{a:1}", "[01]", "NaN",
          "\"\n\"", "\"\xFF\"", "\"\\ud800\"", "\"\\x\"", "1e999", "\"open", "[\"a\":1]"}) {
        EXPECT_FALSE(JsonDocument::parse(bad)) << bad;
    }
    EXPECT_FALSE(JsonDocument::parse(std::string_view{"[1]\0", 4}));
    EXPECT_FALSE(JsonDocument::parse(std::string_view{}));
}

TEST(JsonDocumentTest, WhatItGivesStaysWhenItIsMoved) {
    auto first = JsonDocument::parse(R"(["kept"])");
    ASSERT_TRUE(first);
    const auto second = std::make_unique<JsonDocument>(std::move(*first));

    EXPECT_EQ(second->root().array()->at(0).text(), "kept");
}

TEST(JsonDocumentTest, NestingWithoutEndGivesNoDocument) {
    for (const std::string_view bracket : {"[", "{\"a\":"}) {
        EXPECT_FALSE(JsonDocument::parse(repeated(bracket, 100000)));
    }
    EXPECT_FALSE(JsonDocument::parse(repeated("[", 100000) + repeated("]", 100000)));
    EXPECT_TRUE(JsonDocument::parse(repeated("[", 1000) + repeated("]", 1000)));
}

TEST(JsonDocumentTest, AnyBytesGiveADocumentOrNone) {
    RandomText random{12};
    constexpr std::string_view marks = "[]{}:,\"0.e-tn\\ ";
    int parsed = 0;
    for (int i = 0; i < 20000; ++i) {
        std::string json;
        for (auto left = random.below(12); left > 0; --left) {
            json.push_back(marks[random.below(marks.size())]);
        }

        parsed += JsonDocument::parse(json) ? 1 : 0;

        EXPECT_FALSE(JsonDocument::parse(json + "]" + random.bytes(3) + "x"));
    }
    EXPECT_GT(parsed, 0);
}

TEST(RecordsOfADocumentTest, OneBadEntryFailsTheWholeDocument) {
    EXPECT_EQ(decodeRecords<Word>(R"([{"text":"a"},{"text":"b"}])"),
              (std::vector<Word>{{"a"}, {"b"}}));
    for (const std::string_view bad :
         {R"([{"text":"a"},{"text":1}])", R"([{"text":"a"},{}])", R"([{"text":"a"},null])",
          R"([{"text":"a"},{"text":null}])", R"([{"text":"a"},[]])", R"([{"text":"a"},"b"])"}) {
        EXPECT_EQ(decodeRecords<Word>(bad), std::nullopt) << bad;
    }
}

TEST(RecordsOfADocumentTest, OnlyAnArrayHoldsRecords) {
    EXPECT_EQ(decodeRecords<Word>("[]"), std::vector<Word>{});
    for (const std::string_view bad : {"", "null", "{}", R"({"text":"a"})", "\"a\"", "1"}) {
        EXPECT_EQ(decodeRecords<Word>(bad), std::nullopt) << bad;
    }
}

TEST(RecordsOfADocumentTest, ExtraFieldsAreIgnored) {
    EXPECT_EQ(decodeRecords<Word>(R"([{"more":[1,{}],"text":"a","x":null}])"),
              (std::vector<Word>{{"a"}}));
}

TEST(RecordsOfADocumentTest, ADocumentOfAHundredMegabytesIsRead) {
    std::vector<Word> words(1);
    words[0].text.assign(100'000'000, 'x');

    const auto json = encodeRecords(words);

    ASSERT_TRUE(json);
    EXPECT_GT(json->size(), 100'000'000U);
    EXPECT_TRUE(decodeRecords<Word>(*json) == words);
}

TEST(RecordsOfADocumentTest, AHundredMegabytesThatEndTooEarlyAreRefused) {
    std::string json = R"([{"text":")";
    json.append(100'000'000, 'x');

    EXPECT_FALSE(decodeRecords<Word>(json));
}

TEST(RecordsOfADocumentTest, ALongListOfRecordsIsReadBack) {
    RandomText random{13};
    std::vector<Word> words(20000);
    for (Word& word : words) word.text = random.text(10);

    const auto json = encodeRecords(words);

    ASSERT_TRUE(json);
    EXPECT_TRUE(decodeRecords<Word>(*json) == words);
}

TEST(RecordsOfADocumentTest, AnObjectWithAMillionFieldsIsRead) {
    std::string json = "[{";
    for (int i = 0; i < 1000000; ++i) json += "\"a\":0,";
    json += "\"text\":\"x\"}]";

    EXPECT_EQ(decodeRecords<Word>(json), (std::vector<Word>{{"x"}}));
}

TEST(JsonTest, TheFieldsOfAnObjectComeInTheirOrder) {
    const auto document = JsonDocument::parse(R"({"b":1,"a":"x","b":null})");

    const auto fields = document->root().fields();

    ASSERT_TRUE(fields);
    ASSERT_EQ(fields->size(), 3u);
    EXPECT_EQ(fields->at(0).first, "b");
    EXPECT_EQ(fields->at(1).first, "a");
    EXPECT_EQ(fields->at(1).second.text(), "x");
    EXPECT_FALSE(JsonDocument::parse("[1]")->root().fields());
}

TEST(JsonTest, ANameThatIsNoUtf8IsWrittenSoThatItCanBeReadBack) {
    JsonWriter writer;
    writer.beginObject().key("a\xff").value("x").endObject();

    const auto text = std::move(writer).finish();

    EXPECT_EQ(text, "{\"a\uFFFD\":\"x\"}");
    EXPECT_TRUE(JsonDocument::parse(*text));
}

}  // namespace
}  // namespace orvu
