#include "foundation/Date.h"

#include <gtest/gtest.h>

#include <limits>

namespace orvu {
namespace {

using namespace std::chrono_literals;

TEST(DateTest, CountsSecondsSinceTheBeginningOf2001) {
    EXPECT_EQ(Date{}.secondsSinceReference(), 0.0);
    EXPECT_EQ(Date{}.unixSeconds(), 978307200.0);
    EXPECT_EQ(Date::fromUnixSeconds(978307200.0), Date{0});
    EXPECT_EQ(Date::fromUnixSeconds(0), Date{-978307200.0});
}

TEST(DateTest, LaterDatesCompareGreater) {
    EXPECT_LT(Date{1}, Date{2});
    EXPECT_EQ(Date{1}, Date{1});
    EXPECT_LT(Date::distantPast(), Date::fromUnixSeconds(-60000000000.0));
}

TEST(DateTest, AnIntervalIsAddedInSeconds) {
    EXPECT_EQ(Date{100}.after(1500ms), Date{101.5});
    EXPECT_EQ(Date{100}.after(-1h), Date{-3500});
    EXPECT_EQ(Date{100}.secondsSince(Date{40}), 60.0);
    EXPECT_EQ(Date{40}.secondsSince(Date{100}), -60.0);
}

TEST(DateTest, WholeSecondsAreTruncatedTowardsZero) {
    EXPECT_EQ(Date::fromUnixSeconds(1.9).wholeUnixSeconds(), 1);
    EXPECT_EQ(Date::fromUnixSeconds(-1.9).wholeUnixSeconds(), -1);
    EXPECT_EQ(Date{0.75}.wholeUnixSeconds(), 978307200);
}

TEST(DateTest, WholeSecondsOfAnUnreasonableDateStayWithin64Bits) {
    EXPECT_EQ(Date{1e300}.wholeUnixSeconds(), 9000000000000000000);
    EXPECT_EQ(Date{-1e300}.wholeUnixSeconds(), -9000000000000000000);
    EXPECT_EQ(Date{std::numeric_limits<double>::infinity()}.wholeUnixSeconds(),
              9000000000000000000);
    EXPECT_EQ(Date{std::numeric_limits<double>::quiet_NaN()}.wholeUnixSeconds(), 0);
}

TEST(DateTest, NowIsTheSystemClock) {
    const auto seconds = [] {
        const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
        return std::chrono::duration<double>(sinceEpoch).count();
    };

    const double before = seconds();
    const Date now = Date::now();
    const double after = seconds();

    // A date counts from 2001 in a double, which rounds it by less than a millisecond.
    EXPECT_GE(now.unixSeconds(), before - 0.001);
    EXPECT_LE(now.unixSeconds(), after + 0.001);
}

}  // namespace
}  // namespace orvu
