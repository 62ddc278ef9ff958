#include "core/Records.h"

#include "core/Bookmarks.h"
#include "core/TabGroup.h"
#include "foundation/RandomText.h"

#include <gtest/gtest.h>

#include <limits>

namespace orvu {
namespace {

const Uuid id = *Uuid::parse("0badcafe-0000-4000-8000-00000000f00d");
const std::string lowerId = R"("0badcafe-0000-4000-8000-00000000f00d")";
const std::string upperId = R"("0BADCAFE-0000-4000-8000-00000000F00D")";

Url url(std::string_view text) { return Url::parse(text).value(); }

/// A field of a record: its name, a value that is good and some that are not.
struct Field {
    std::string name;
    std::string good;
    std::vector<std::string> bad;
};

const Field idField{"id", lowerId, {"\"\"", "\"x\"", "1", "true", "{}"}};
const Field urlField{"url", R"("https://a.b/")", {"\"\"", "\"a b\"", "\"\\n\"", "1", "[]"}};
const Field textField(std::string name) { return {std::move(name), "\"x\"", {"1", "false", "[]"}}; }
const Field dateField{"date", "780000000.5", {"\"780000000\"", "true", "{}"}};
const Field boolField(std::string name) {
    return {std::move(name), "false", {"0", "\"false\"", "[]"}};
}
const Field colorField{"color", "2", {"2.5", "\"2\"", "1e300", "true"}};

/// A document of one good and one more record, whose field number `changed` has `value`; the
/// field is left out if there is none.
std::string documentWith(const std::vector<Field>& fields, std::size_t changed,
                         const std::optional<std::string>& value) {
    std::string good;
    std::string other;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        const auto put = [&](std::string& record, const std::string& text) {
            record += joined({record.empty() ? "\"" : ",\"", fields[i].name, "\":", text});
        };
        put(good, fields[i].good);
        if (i != changed) {
            put(other, fields[i].good);
        } else if (value) {
            put(other, *value);
        }
    }
    return joined({"[{", good, "},{", other, "}]"});
}

/// Every field is needed, has one type, and may stand in any order beside others.
template <class Record>
void expectStrict(const std::vector<Field>& fields) {
    const auto decodes = [](const std::string& json) {
        return decodeRecords<Record>(json).has_value();
    };
    for (std::size_t i = 0; i < fields.size(); ++i) {
        EXPECT_TRUE(decodes(documentWith(fields, i, fields[i].good)));
        EXPECT_FALSE(decodes(documentWith(fields, i, std::nullopt))) << fields[i].name;
        EXPECT_FALSE(decodes(documentWith(fields, i, "null"))) << fields[i].name;
        EXPECT_TRUE(decodes(documentWith(fields, i, fields[i].good + R"(,"more":[{}],"x":null)")));
        for (const auto& bad : fields[i].bad) {
            EXPECT_FALSE(decodes(documentWith(fields, i, bad))) << fields[i].name << ": " << bad;
        }
    }
    const std::vector<Field> backwards(fields.rbegin(), fields.rend());
    EXPECT_TRUE(decodes(documentWith(backwards, 0, backwards[0].good)));
}

template <class Record>
void expectRoundTrip(const std::vector<Record>& records) {
    const auto json = encodeRecords(records);

    ASSERT_TRUE(json);
    EXPECT_EQ(decodeRecords<Record>(*json), records) << *json;
}

TEST(VisitTest, IsWrittenWithExactlyTheseFields) {
    const std::vector visits{Visit{id, url("https://a.b/"), "A \"title\"", Date{780000000.5}}};

    EXPECT_EQ(encodeRecords(visits),
              R"([{"id":)" + upperId +
                  R"(,"url":"https://a.b/","title":"A \"title\"","date":780000000.5}])");
}

TEST(VisitTest, EveryFieldIsRequired) {
    expectStrict<Visit>({idField, urlField, textField("title"), dateField});
}

TEST(VisitTest, IsReadInEitherCaseOfItsIdentity) {
    const std::vector expected{Visit{id, url("https://a.b/"), "x", Date{0}}};
    const auto with = [](const std::string& written) {
        return R"([{"id":)" + written + R"(,"url":"https://a.b/","title":"x","date":0}])";
    };

    EXPECT_EQ(decodeRecords<Visit>(with(lowerId)), expected);
    EXPECT_EQ(decodeRecords<Visit>(with(upperId)), expected);
}

TEST(VisitTest, ADateThatIsNotFiniteFailsTheWholeList) {
    const std::vector visits{
        Visit{id, url("https://a.b/"), "x", Date{0}},
        Visit{id, url("https://a.b/"), "x", Date{std::numeric_limits<double>::infinity()}}};

    EXPECT_EQ(encodeRecords(visits), std::nullopt);
}

TEST(VisitTest, OddTitlesAndAddressesAreReadBack) {
    RandomText random{30};
    std::vector<Visit> visits;
    while (visits.size() < 2000) {
        auto address = Url::parse(joined({"x:", random.text(4)}));
        const auto title = random.text(12);
        if (address) visits.push_back({Uuid::random(), *address, title, Date{-0.1}});
    }

    expectRoundTrip(visits);
}

TEST(VisitTest, ATitleThatIsNoUtf8IsWrittenWithReplacements) {
    const std::vector visits{Visit{id, url("https://a.b/"), "a\xFFz", Date{0}}};

    const auto read = decodeRecords<Visit>(encodeRecords(visits).value());

    ASSERT_TRUE(read);
    EXPECT_EQ(read->at(0).title, "a\uFFFDz");
}

TEST(SavedTabTest, IsWrittenWithExactlyTheseFieldsAndItsGroupOnlyIfItHasOne) {
    const std::vector tabs{SavedTab{url("https://a.b/"), true, std::nullopt},
                           SavedTab{url("about:blank"), false, id}};

    EXPECT_EQ(encodeRecords(tabs), R"([{"url":"https://a.b/","pinned":true},)"
                                   R"({"url":"about:blank","pinned":false,"group":)" +
                                       upperId + "}]");
}

TEST(SavedTabTest, AddressAndPinAreRequired) {
    expectStrict<SavedTab>({urlField, boolField("pinned")});
}

TEST(SavedTabTest, AMissingGroupAndNullAreNoGroup) {
    const std::vector<SavedTab> expected{{url("https://a.b/"), true, std::nullopt}};

    EXPECT_EQ(decodeRecords<SavedTab>(R"([{"url":"https://a.b/","pinned":true}])"), expected);
    EXPECT_EQ(decodeRecords<SavedTab>(R"([{"url":"https://a.b/","pinned":true,"group":null}])"),
              expected);
}

TEST(SavedTabTest, AGroupThatIsNoIdentityFailsTheWholeList) {
    for (const std::string bad : {"\"\"", "\"x\"", "1", "{}", "false"}) {
        EXPECT_EQ(decodeRecords<SavedTab>(R"([{"url":"https://a.b/","pinned":true,"group":)" + bad +
                                          "}]"),
                  std::nullopt)
            << bad;
    }
}

TEST(SavedTabTest, IsReadBackAsItWas) {
    expectRoundTrip<SavedTab>({{url("https://a.b/"), true, id},
                               {url("https://bücher.example/%FF"), false, std::nullopt},
                               {url("file:///x"), true, Uuid{}}});
}

TEST(ParkedTest, IsWrittenWithExactlyTheseFields) {
    const std::vector parked{Parked{id, url("https://a.b/"), "x"}};

    EXPECT_EQ(encodeRecords(parked),
              R"([{"id":)" + upperId + R"(,"url":"https://a.b/","title":"x"}])");
}

TEST(ParkedTest, EveryFieldIsRequired) {
    expectStrict<Parked>({idField, urlField, textField("title")});
}

TEST(ParkedTest, IsReadBackAsItWas) {
    expectRoundTrip<Parked>({{id, url("https://a.b/"), ""}, {Uuid{}, url("a"), "\n\"\\/"}});
}

TEST(TabGroupTest, IsWrittenWithExactlyTheseFields) {
    const std::vector groups{TabGroup{id, "News", 3, true}};

    EXPECT_EQ(encodeRecords(groups),
              R"([{"id":)" + upperId + R"(,"name":"News","color":3,"collapsed":true}])");
}

TEST(TabGroupTest, EveryFieldIsRequired) {
    expectStrict<TabGroup>({idField, textField("name"), colorField, boolField("collapsed")});
}

TEST(TabGroupTest, AnIntegerMayBeWrittenWithAFractionOfZero) {
    const auto groups = decodeRecords<TabGroup>(R"([{"id":)" + lowerId +
                                                R"(,"name":"x","color":2.0,"collapsed":false}])");

    EXPECT_EQ(groups, (std::vector{TabGroup{id, "x", 2, false}}));
}

TEST(TabGroupTest, WhateverColourWasStoredWrapsIntoThePalette) {
    const std::vector<std::pair<std::string, int>> colors{{"0", 0},
                                                          {"5", 5},
                                                          {"6", 0},
                                                          {"-1", 5},
                                                          {"-6", 0},
                                                          {"-7", 5},
                                                          {"99", 3},
                                                          {"1e3", 4},
                                                          {"9223372036854775807", 1},
                                                          {"-9223372036854775808", 4}};

    for (const auto& [stored, color] : colors) {
        const auto groups = decodeRecords<TabGroup>(
            R"([{"id":)" + lowerId + R"(,"name":"x","collapsed":false,"color":)" + stored + "}]");

        EXPECT_EQ(groups, (std::vector{TabGroup{id, "x", color, false}})) << stored;
    }
}

TEST(TabGroupTest, ThePaletteHasSixColoursInThisOrder) {
    EXPECT_EQ(TabGroup::groupColors, (std::array<Color, 6>{{{0x6C, 0xF0, 0xC2},
                                                            {0x5C, 0xB2, 0xFF},
                                                            {0xA5, 0x94, 0xFF},
                                                            {0xFF, 0xB5, 0x47},
                                                            {0xFF, 0x8A, 0xD8},
                                                            {0x9C, 0xD3, 0xFF}}}));
}

TEST(TabGroupTest, IsReadBackAsItWas) {
    expectRoundTrip<TabGroup>({{id, "", 0, false}, {Uuid{}, "👩‍👩‍👧", 5, true}});
}

TEST(BookmarkRecordTest, IsWrittenWithExactlyTheseFields) {
    const std::vector bookmarks{BookmarkStore::Bookmark{id, url("https://a.b/"), "x", Date{1}}};

    EXPECT_EQ(encodeRecords(bookmarks),
              R"([{"id":)" + upperId + R"(,"url":"https://a.b/","title":"x","date":1}])");
}

TEST(BookmarkRecordTest, EveryFieldIsRequired) {
    expectStrict<BookmarkStore::Bookmark>({idField, urlField, textField("title"), dateField});
}

TEST(BookmarkRecordTest, IsReadBackAsItWas) {
    expectRoundTrip<BookmarkStore::Bookmark>(
        {{id, url("https://a.b/"), "x", Date{780000000.123456}}, {Uuid{}, url("a"), "", Date{-1}}});
}

}  // namespace
}  // namespace orvu
