#include "platform/AddressFlood.h"

#include <gtest/gtest.h>

#include <chrono>
#include <random>
#include <utility>
#include <vector>

namespace orvu {
namespace {

using namespace std::chrono_literals;

constexpr std::size_t mebibyte = std::size_t{1024} * 1024;

TEST(AddressFloodTest, OrdinaryAddressesNeverCount) {
    AddressFlood flood;
    for (int i = 0; i < 100'000; ++i) EXPECT_FALSE(flood.add(AddressFlood::shortest - 1, Date{1}));
}

TEST(AddressFloodTest, ALongOneMayBeSetNowAndThen) {
    AddressFlood flood;
    for (int second = 0; second < 100; ++second) {
        const Date now{static_cast<double>(second)};
        EXPECT_FALSE(flood.add(mebibyte / 2, now));
        EXPECT_FALSE(flood.add(mebibyte / 2, now.after(500ms)));
    }
}

TEST(AddressFloodTest, MoreThanTheLimitWithinAPeriodIsTooMuch) {
    AddressFlood flood;
    EXPECT_FALSE(flood.add(AddressFlood::limit / 2, Date{1}));
    EXPECT_FALSE(flood.add(AddressFlood::limit / 2, Date{1.5}));
    EXPECT_TRUE(flood.add(AddressFlood::shortest, Date{1 + AddressFlood::period - 0.1}));
    EXPECT_FALSE(flood.add(AddressFlood::limit / 2, Date{1 + AddressFlood::period}));
}

TEST(AddressFloodTest, ItIsSeenOnAComputerThatTakesButOneInASecond) {
    AddressFlood flood;
    bool seen = false;
    for (int second = 0; second < 8; ++second) seen = flood.add(2 * mebibyte, Date{1.0 + second});
    EXPECT_TRUE(seen);
}

TEST(AddressFloodTest, OneAndAnotherAreNeverTooMuchHoweverLong) {
    AddressFlood flood;
    EXPECT_FALSE(flood.add(100 * mebibyte, Date{1}));
    EXPECT_FALSE(flood.add(100 * mebibyte, Date{1}));
    EXPECT_TRUE(flood.add(AddressFlood::shortest, Date{1}));
}

TEST(AddressFloodTest, AClockThatIsSetBackBeginsAnew) {
    AddressFlood flood;
    EXPECT_FALSE(flood.add(4 * mebibyte, Date{1000}));
    EXPECT_FALSE(flood.add(4 * mebibyte, Date{1000}));
    EXPECT_FALSE(flood.add(4 * mebibyte, Date{1}));
}

TEST(AddressFloodTest, WhateverComesItIsSaidOnlyWhereTheLastPeriodBroughtMoreThanTheLimit) {
    std::mt19937 random{7};
    for (int round = 0; round < 200; ++round) {
        AddressFlood flood;
        double now = 1;
        std::vector<std::pair<double, std::size_t>> changes;
        for (int change = 0; change < 200; ++change) {
            now += std::uniform_real_distribution{0.0, 2.0}(random);
            const auto bytes = std::uniform_int_distribution<std::size_t>{1, 3 * mebibyte}(random);
            changes.emplace_back(now, bytes);
            std::erase_if(changes, [now](const auto& each) {
                return each.first <= now - AddressFlood::period;
            });
            std::size_t sum = 0;
            for (const auto& each : changes) sum += each.second;
            const bool told = flood.add(bytes, Date{now});
            EXPECT_FALSE(told && sum <= AddressFlood::limit);
            EXPECT_FALSE(told && bytes < AddressFlood::shortest);
        }
    }
}

}  // namespace
}  // namespace orvu
