#include "profiles/Setting.h"

#include "fakes/FakeUserDefaults.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <string>
#include <vector>

namespace orvu {
namespace {

enum class Fruit { apple, plum };
struct FruitFacts {
    Fruit fruit;
    std::string_view rawValue;
};
constexpr std::array<FruitFacts, 2> fruits{{{Fruit::apple, "apple"}, {Fruit::plum, "plum"}}};

}  // namespace

template <>
struct SettingFormat<Fruit> : RawValueFormat<fruits, &FruitFacts::fruit> {};

namespace {

class SettingTest : public testing::Test {
protected:
    /// Adds a line to the log at each change of a setting.
    template <class T>
    void watch(Setting<T>& setting, const std::string& line) {
        setting.connectChanged([this, line] { log.push_back(line); });
    }

    FakeUserDefaults defaults;
    Setting<bool> on{defaults, {.name = "on", .unset = "true"}};
    Setting<std::int64_t> count{defaults, {.name = "count", .unset = "7"}};
    Setting<double> size{defaults, {.name = "size", .unset = "1.5"}};
    Setting<std::string> text{defaults, {.name = "text", .unset = "unset"}};
    Setting<Fruit> fruit{defaults, {.name = "fruit", .unset = "plum"}};
    std::vector<std::string> log;
};

TEST_F(SettingTest, WithoutAValueThatOfTheTableCounts) {
    EXPECT_TRUE(on.get());
    EXPECT_EQ(count.get(), 7);
    EXPECT_EQ(size.get(), 1.5);
    EXPECT_EQ(text.get(), "");
    EXPECT_EQ(fruit.get(), Fruit::plum);
    EXPECT_TRUE(defaults.written.empty());
}

TEST_F(SettingTest, ASwitchIsOffUnlessTheTableSaysTrue) {
    for (const auto* unset : {"false", "not decided yet", ""}) {
        EXPECT_FALSE((Setting<bool>{defaults, {.name = "other", .unset = unset}}.get())) << unset;
    }
}

TEST_F(SettingTest, EachTypeIsStoredInItsOwnForm) {
    on.set(false);
    count.set(-3);
    size.set(2);
    text.set("a");
    fruit.set(Fruit::apple);

    using Values = decltype(defaults.values);
    EXPECT_EQ(defaults.values, (Values{{"on", std::int64_t{0}},
                                       {"count", std::int64_t{-3}},
                                       {"size", 2.0},
                                       {"text", std::string{"a"}},
                                       {"fruit", std::string{"apple"}}}));
    EXPECT_FALSE(on.get());
    EXPECT_EQ(count.get(), -3);
    EXPECT_EQ(size.get(), 2);
    EXPECT_EQ(text.get(), "a");
    EXPECT_EQ(fruit.get(), Fruit::apple);
}

TEST_F(SettingTest, AValueOfAnotherTypeCountsAsNone) {
    for (const auto* key : {"count", "size", "text", "fruit"}) defaults.setData(key, "7");
    EXPECT_EQ(count.get(), 7);
    EXPECT_EQ(size.get(), 1.5);
    EXPECT_EQ(text.get(), "");
    EXPECT_EQ(fruit.get(), Fruit::plum);

    for (const auto* key : {"count", "size"}) defaults.setString(key, "9");
    for (const auto* key : {"text", "fruit"}) defaults.setInteger(key, 0);
    EXPECT_EQ(count.get(), 7);
    EXPECT_EQ(size.get(), 1.5);
    EXPECT_EQ(text.get(), "");
    EXPECT_EQ(fruit.get(), Fruit::plum);
}

TEST_F(SettingTest, ASwitchIsOffWhereSomethingIsStoredThatIsNoSwitch) {
    defaults.setData("on", "1");

    EXPECT_FALSE(on.get());
    EXPECT_TRUE(on.isSet());
}

TEST_F(SettingTest, NumbersOfBothKindsAreRead) {
    defaults.setNumber("count", 2.9);
    defaults.setInteger("size", 3);

    EXPECT_EQ(count.get(), 2);
    EXPECT_EQ(size.get(), 3);
}

TEST_F(SettingTest, ANumberThatIsNotFiniteCountsAsNone) {
    for (const double stored :
         {std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
        defaults.setNumber("size", stored);

        EXPECT_EQ(size.get(), 1.5);
    }
}

TEST_F(SettingTest, ATextThatIsNotInTheTableCountsAsNone) {
    for (const auto* stored : {"", "Apple", "apple ", "cherry", "\xFF"}) {
        defaults.setString("fruit", stored);

        EXPECT_EQ(fruit.get(), Fruit::plum) << stored;
    }
}

TEST_F(SettingTest, ItIsSetOnceAnythingIsStored) {
    EXPECT_FALSE(on.isSet());

    on.set(true);

    EXPECT_TRUE(on.isSet());
}

TEST_F(SettingTest, ASignalGoesOutAfterEachChange) {
    watch(size, "size");

    size.set(2);
    EXPECT_EQ(size.get(), 2);
    size.set(3);

    EXPECT_EQ(log, (std::vector<std::string>{"size", "size"}));
}

TEST_F(SettingTest, WhatCountsAlreadyIsWrittenWithoutASignal) {
    watch(on, "on");
    watch(fruit, "fruit");

    on.set(true);
    on.set(true);
    fruit.set(Fruit::plum);

    EXPECT_EQ(log, std::vector<std::string>{});
    EXPECT_EQ(defaults.written, (std::vector<std::string>{"on", "on", "fruit"}));
}

TEST_F(SettingTest, AValueInThePlaceOfOneOfAnotherTypeIsNoChangeIfItCountedBefore) {
    defaults.setString("size", "large");
    watch(size, "size");

    size.set(1.5);

    EXPECT_EQ(log, std::vector<std::string>{});
    EXPECT_EQ(defaults.number("size"), 1.5);
}

TEST_F(SettingTest, AWriteThatIsRefusedIsNoChange) {
    watch(on, "on");
    defaults.diskFull = true;

    on.set(false);

    EXPECT_EQ(log, std::vector<std::string>{});
    EXPECT_TRUE(on.get());
}

TEST_F(SettingTest, AllObserversHearOfAChangeUntilTheyGo) {
    watch(count, "first");
    auto second = count.connectChanged([this] { log.emplace_back("second"); });

    count.set(1);
    second.disconnect();
    count.set(2);

    EXPECT_EQ(log, (std::vector<std::string>{"first", "second", "first"}));
}

TEST_F(SettingTest, OtherSettingsStaySilent) {
    watch(on, "on");
    watch(text, "text");

    count.set(1);

    EXPECT_EQ(log, std::vector<std::string>{});
}

TEST_F(SettingTest, AnObserverMaySetAgainAndAllEndWithTheLastValue) {
    std::vector<std::int64_t> seen;
    count.connectChanged([this] {
        if (count.get() > 3) count.set(3);
    });
    count.connectChanged([&] { seen.push_back(count.get()); });

    count.set(9);

    EXPECT_EQ(count.get(), 3);
    ASSERT_FALSE(seen.empty());
    EXPECT_EQ(seen.back(), 3);
    EXPECT_EQ(defaults.integer("count"), 3);
}

TEST_F(SettingTest, AnObserverThatSetsWhatCountsDoesNotGoRound) {
    int calls = 0;
    on.connectChanged([&] {
        ++calls;
        on.set(on.get());
    });

    on.set(false);

    EXPECT_EQ(calls, 1);
}

TEST_F(SettingTest, WithinABatchTheNewValueCountsAtOnce) {
    watch(count, "count");
    {
        const UserDefaults::Batch batch{defaults};
        count.set(1);
        EXPECT_EQ(count.get(), 1);
    }

    EXPECT_EQ(log, std::vector<std::string>{"count"});
}

}  // namespace
}  // namespace orvu
