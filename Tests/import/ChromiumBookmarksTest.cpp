#include "import/formats/ChromiumBookmarks.h"

#include "foundation/RandomText.h"
#include "import/ImportLines.h"

#include <gtest/gtest.h>

namespace orvu {
namespace {

Strings read(std::string_view json) { return lines(chromiumBookmarks(json)); }

/// A document with the content of the bar.
std::string bar(const std::string& children) {
    return R"({"roots":{"bookmark_bar":{"type":"folder","children":[)" + children +
           R"(]}},"version":1})";
}

TEST(ChromiumBookmarks, TheThreeRootsAreReadInTheirOrderAndEachFolderInItsOwn) {
    const char* const json = R"({"checksum":"0","roots":{
        "synced":{"type":"folder","children":[{"type":"url","name":"S","url":"https://s.example/"}]},
        "other":{"type":"folder","children":[{"type":"url","name":"O","url":"https://o.example/"}]},
        "trash":{"type":"folder","children":[{"type":"url","name":"T","url":"https://t.example/"}]},
        "bookmark_bar":{"type":"folder","children":[
            {"type":"url","name":"A","url":"https://a.example/"},
            {"type":"folder","name":"F","children":[
                {"type":"url","name":"B","url":"http://b.example/"},
                {"type":"folder","children":[{"type":"url","name":"C","url":"HTTPS://c.example/"}]},
                {"type":"url","name":"D","url":"https://d.example/"}]},
            {"type":"url","name":"E","url":"https://e.example/"}]}},"version":1})";

    EXPECT_EQ(read(json),
              (Strings{"https://a.example/ A", "http://b.example/ B", "HTTPS://c.example/ C",
                       "https://d.example/ D", "https://e.example/ E", "https://o.example/ O",
                       "https://s.example/ S"}));
}

TEST(ChromiumBookmarks, OtherSchemesAreDropped) {
    EXPECT_EQ(read(bar(R"({"type":"url","name":"a","url":"chrome://settings/"},
                          {"type":"url","name":"b","url":"file:///etc/passwd"},
                          {"type":"url","name":"c","url":"javascript:alert"},
                          {"type":"url","name":"d","url":"relative"},
                          {"type":"url","name":"e","url":"https://a b/"},
                          {"type":"url","name":"f","url":"https://f.example/"})")),
              Strings{"https://f.example/ f"});
}

TEST(ChromiumBookmarks, AMissingNameIsTheAddressAndAnEmptyOneStays) {
    EXPECT_EQ(read(bar(R"({"type":"url","url":"https://a.example/"},
                          {"type":"url","name":7,"url":"https://b.example/"},
                          {"type":"url","name":"","url":"https://c.example/"})")),
              (Strings{"https://a.example/ https://a.example/",
                       "https://b.example/ https://b.example/", "https://c.example/ "}));
}

TEST(ChromiumBookmarks, ChildrenOfALinkAreWalkedToo) {
    EXPECT_EQ(read(bar(R"({"type":"url","name":"a","url":"https://a.example/","children":[
                            {"type":"url","name":"b","url":"https://b.example/"}]})")),
              (Strings{"https://a.example/ a", "https://b.example/ b"}));
}

TEST(ChromiumBookmarks, WhatIsNoObjectIsPassedOver) {
    EXPECT_EQ(read(bar(R"(1, null, "x", [{"type":"url","url":"https://no.example/"}],
                          {"type":"url","url":5}, {"type":"url"}, {"children":7},
                          {"type":"url","name":"a","url":"https://a.example/"})")),
              Strings{"https://a.example/ a"});
    EXPECT_EQ(read(R"({"roots":{"bookmark_bar":[1],"other":"x"}})"), Strings{});
}

TEST(ChromiumBookmarks, WhatCantBeReadAsAWholeGivesNothing) {
    const std::string whole = bar(R"({"type":"url","name":"a","url":"https://a.example/"})");
    EXPECT_EQ(read(whole).size(), 1U);
    for (std::size_t size = 0; size < whole.size(); ++size) {
        EXPECT_EQ(read(whole.substr(0, size)), Strings{}) << size;
    }
    EXPECT_EQ(read("[]"), Strings{});
    EXPECT_EQ(read(R"({"roots":[]})"), Strings{});
    EXPECT_EQ(read("\xFF\xFE"), Strings{});
}

/// A bookmark in so many folders, one in the other.
std::string nested(std::size_t folders) {
    return bar(repeated(R"({"type":"folder","children":[)", folders) +
               R"({"type":"url","name":"deep","url":"https://deep.example/"})" +
               repeated("]}", folders));
}

TEST(ChromiumBookmarks, FoldersMayBeNestedFiveHundredDeepAndTenThousandGiveNothing) {
    EXPECT_EQ(read(nested(500)), Strings{"https://deep.example/ deep"});
    EXPECT_EQ(read(nested(10'000)), Strings{});
}

TEST(ChromiumBookmarks, TitlesAreCutAndAddressesTooLongToBeStoredAreDropped) {
    const std::string longest = "https://a.example/" + std::string(65'536 - 18, 'x');
    const auto found = chromiumBookmarks(
        bar(R"({"type":"url","name":")" + repeated("é", 500'000) + R"(","url":")" + longest +
            R"("},{"type":"url","name":"b","url":")" + longest + R"(x"})"));

    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].first.absoluteString(), longest);
    EXPECT_EQ(found[0].second, repeated("é", 1000));
}

/// Writes a random folder, and says what of it is to be found.
void writeFolder(RandomText& random, int depth, JsonWriter& writer, Strings& expected) {
    writer.beginArray();
    for (std::size_t left = random.below(5); left > 0; --left) {
        writer.beginObject().key("name");
        const std::string name = std::to_string(random.below(1'000'000));
        writer.value(name);
        if (random.below(3) == 0 && depth > 0) {
            writer.key("type").value("folder").key("children");
            writeFolder(random, depth - 1, writer, expected);
        } else {
            const bool isWeb = random.below(4) > 0;
            const std::string address = (isWeb ? "https://a.example/" : "ftp://a.example/") + name;
            writer.key("type").value("url").key("url").value(address);
            if (isWeb) expected.push_back(address + " " + name);
        }
        writer.endObject();
    }
    writer.endArray();
}

TEST(ChromiumBookmarks, EachWebPageOfARandomTreeIsFoundOnceInItsOrder) {
    RandomText random{7};
    std::size_t total = 0;
    for (int round = 0; round < 2000; ++round) {
        Strings expected;
        JsonWriter writer;
        writer.beginObject().key("roots").beginObject();
        for (const char* const root : {"bookmark_bar", "other", "synced"}) {
            writer.key(root).beginObject().key("type").value("folder").key("children");
            writeFolder(random, 6, writer, expected);
            writer.endObject();
        }
        writer.endObject().endObject();
        const auto json = std::move(writer).finish();
        ASSERT_TRUE(json);

        ASSERT_EQ(read(*json), expected);
        total += expected.size();
    }
    EXPECT_GT(total, 5000U);
}

}  // namespace
}  // namespace orvu
