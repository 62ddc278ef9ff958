#include "foundation/Calendar.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <limits>

namespace orvu {
namespace {

using namespace std::chrono_literals;

constexpr Date utc(std::chrono::year_month_day day, std::chrono::seconds time = 0s) {
    const auto sinceEpoch = std::chrono::sys_days{day}.time_since_epoch() + time;
    return Date::fromUnixSeconds(std::chrono::duration<double>(sinceEpoch).count());
}

using std::chrono::March;
using std::chrono::October;

TEST(CalendarTest, ADayBeginsAtMidnightOfItsZone) {
    const Date moment = utc(2025y / October / 7, 22h + 30min);

    EXPECT_EQ(Calendar{"UTC"}.startOfDay(moment), utc(2025y / October / 7));
    EXPECT_EQ(Calendar{"Europe/Berlin"}.startOfDay(moment), utc(2025y / October / 7, 22h));
    EXPECT_EQ(Calendar{"America/New_York"}.startOfDay(moment), utc(2025y / October / 7, 4h));
}

TEST(CalendarTest, TheStartOfADayIsItsOwnStart) {
    const Calendar calendar{"Asia/Kathmandu"};
    const Date start = calendar.startOfDay(utc(2025y / October / 7, 12h));

    EXPECT_EQ(calendar.startOfDay(start), start);
    EXPECT_EQ(calendar.startOfDay(start.after(24h - 1ms)), start);
    EXPECT_EQ(calendar.startOfDay(start.after(-1ms)), start.after(-24h));
}

TEST(CalendarTest, FractionsOfASecondAreCutOff) {
    EXPECT_EQ(Calendar{"UTC"}.startOfDay(utc(2025y / October / 7).after(1ms)),
              utc(2025y / October / 7));
}

TEST(CalendarTest, DaysKeepTheTimeOfDayWhenTheClockChanges) {
    const Calendar calendar{"Europe/Berlin"};
    const Date noonBefore = utc(2025y / March / 29, 11h);

    EXPECT_EQ(calendar.addingDays(1, noonBefore), utc(2025y / March / 30, 10h));
    EXPECT_EQ(calendar.addingDays(-1, utc(2025y / March / 30, 10h)), noonBefore);
}

TEST(CalendarTest, ThirtyDaysAcrossAClockChangeAreNoMultipleOf24Hours) {
    const Calendar calendar{"Europe/Berlin"};
    const Date now = utc(2025y / October / 30, 12h);

    const auto cutoff = calendar.addingDays(-30, now);

    ASSERT_TRUE(cutoff);
    EXPECT_EQ(now.secondsSince(*cutoff), 30 * 86400.0 + 3600.0);
}

TEST(CalendarTest, ADayWhoseFirstHourComesTwiceBeginsWithTheFirstOfThem) {
    const Calendar havana{"America/Havana"};
    const Date start = utc(2024y / std::chrono::November / 3, 4h);

    EXPECT_EQ(havana.startOfDay(start.after(30min)), start);
    EXPECT_EQ(havana.startOfDay(start.after(90min)), start);
    EXPECT_EQ(havana.startOfDay(start.after(-1s)), start.after(-24h));
    EXPECT_EQ(havana.startOfDay(start.after(25h)), start.after(25h));
}

TEST(CalendarTest, ADayWithoutAMidnightBeginsWhenTheClockHasGoneForward) {
    const Calendar beirut{"Asia/Beirut"};
    const Date start = utc(2024y / March / 30, 22h);

    EXPECT_EQ(beirut.startOfDay(start.after(12h)), start);
    EXPECT_EQ(beirut.startOfDay(start), start);
    EXPECT_EQ(beirut.startOfDay(start.after(-1s)), start.after(-24h));
}

TEST(CalendarTest, NoDaysGiveTheSameMoment) {
    const Date moment = utc(2025y / October / 7, 22h + 30min);

    EXPECT_EQ(Calendar{"UTC"}.addingDays(0, moment), moment);
}

TEST(CalendarTest, AnUnknownZoneCountsAsUtc) {
    const Date moment = utc(2025y / October / 7, 22h + 30min);

    EXPECT_EQ(Calendar{"Nowhere/At_All"}.startOfDay(moment), utc(2025y / October / 7));
    EXPECT_EQ(Calendar{"\xFF\xFE"}.startOfDay(moment), utc(2025y / October / 7));
}

TEST(CalendarTest, TheCurrentCalendarIsTheOneOfTheUsersZone) {
    const Date start = Calendar::current().startOfDay(Date::now());

    const auto seconds = static_cast<std::time_t>(start.unixSeconds());
    std::tm local{};
    ASSERT_NE(localtime_r(&seconds, &local), nullptr);
    EXPECT_EQ(local.tm_hour, 0);
    EXPECT_EQ(local.tm_min, 0);
    EXPECT_EQ(local.tm_sec, 0);
}

TEST(CalendarTest, DatesOfAMillionYearsHaveAStartOfTheirDay) {
    const Calendar calendar{"Europe/Berlin"};
    for (const double seconds : {1e12, -1e12, 3e13, -3e13}) {
        const Date date{seconds};

        const Date start = calendar.startOfDay(date);

        EXPECT_LE(start, date) << seconds;
        EXPECT_LT(date.secondsSince(start), 90000.0) << seconds;
        EXPECT_LT(calendar.addingDays(-30, date), date) << seconds;
    }
}

TEST(CalendarTest, DatesBeyondTheCalendarAreAnsweredAllTheSame) {
    const Calendar calendar{"Europe/Berlin"};
    for (const double seconds : {1e18, -1e18, 1e300, -1e300, std::numeric_limits<double>::max(),
                                 std::numeric_limits<double>::lowest()}) {
        const Date date{seconds};

        const Date start = calendar.startOfDay(date);
        const Date earlier = calendar.addingDays(-30, date).value_or(date);

        EXPECT_TRUE(std::isfinite(start.secondsSinceReference())) << seconds;
        EXPECT_TRUE(std::isfinite(earlier.secondsSinceReference())) << seconds;
    }
}

}  // namespace
}  // namespace orvu
