#include "platform/StoredRecords.h"

#include "fakes/FakeUserDefaults.h"
#include "core/Records.h"

#include <gtest/gtest.h>

#include <limits>

namespace orvu {
namespace {

const std::vector<Parked> shelf{{Uuid::random(), *Url::parse("https://a.example/"), "A"},
                                {Uuid::random(), *Url::parse("https://b.example/"), ""}};

TEST(StoredRecordsTest, WhatWasWrittenIsReadBack) {
    FakeUserDefaults defaults;

    writeRecords(defaults, "list", shelf);

    EXPECT_EQ(readRecords<Parked>(defaults, "list"), shelf);
}

TEST(StoredRecordsTest, NothingStoredIsNotAnEmptyList) {
    FakeUserDefaults defaults;
    EXPECT_EQ(readRecords<Parked>(defaults, "list"), std::nullopt);

    writeRecords(defaults, "list", std::vector<Parked>{});

    EXPECT_EQ(readRecords<Parked>(defaults, "list"), std::vector<Parked>{});
}

TEST(StoredRecordsTest, OneBadRecordMakesTheWholeListAbsent) {
    FakeUserDefaults defaults;
    auto text = *encodeRecords(shelf);
    text.insert(text.size() - 1, R"(,{"id":"no"})");
    defaults.setData("list", text);

    EXPECT_EQ(readRecords<Parked>(defaults, "list"), std::nullopt);
}

TEST(StoredRecordsTest, AListThatDoesNotDecodeIsSetAside) {
    FakeUserDefaults defaults;
    defaults.setData("cut", "[{");
    defaults.setString("text", "[]");
    writeRecords(defaults, "good", shelf);

    for (const auto* const key : {"cut", "text", "good", "absent"}) {
        static_cast<void>(readRecords<Parked>(defaults, key));
    }

    EXPECT_EQ(defaults.doubted, (std::vector<std::string>{"cut", "text"}));
}

TEST(StoredRecordsTest, ARecordThatCannotBeWrittenLeavesWhatIsStored) {
    FakeUserDefaults defaults;
    const Visit good{Uuid::random(), *Url::parse("https://a.example/"), "A",
                     Date::fromUnixSeconds(0)};
    writeRecords(defaults, "list", std::vector{good});
    Visit bad = good;
    bad.date = Date{std::numeric_limits<double>::infinity()};

    writeRecords(defaults, "list", std::vector{good, bad});

    EXPECT_EQ(readRecords<Visit>(defaults, "list"), std::vector{good});
}

}  // namespace
}  // namespace orvu
