#include "library/LibraryWorld.h"

#include <algorithm>
#include <array>
#include <numeric>

namespace orvu {
namespace {

class LibraryDaysTest : public LibraryTest {
protected:
    /// What the history of two days says in a language, and the time of its last visit.
    Strings linesIn(const std::string& language) {
        world.locale = Locale{{.lang = language}};
        const auto store =
            openLibrary({titled("Before", fromNoon(-day)), titled("Now", noon(), b)});
        LibraryView view{*store, world.services};
        Strings result = lines(view);
        result.push_back(view.row(view.entries().back())->time);
        return result;
    }
};

using Places = std::vector<std::size_t>;

Date utc(std::chrono::year_month_day day, std::chrono::seconds time = {}) {
    const auto sinceEpoch = std::chrono::sys_days{day}.time_since_epoch() + time;
    return Date::fromUnixSeconds(std::chrono::duration<double>(sinceEpoch).count());
}

std::vector<Visit> visitsAt(const std::vector<Date>& dates) {
    std::vector<Visit> visits;
    for (const Date date : dates)
        visits.push_back({Uuid::random(), url("https://a.example/"), "", date});
    return visits;
}

Places allOf(const std::vector<Visit>& visits) {
    Places places(visits.size());
    std::iota(places.begin(), places.end(), std::size_t{0});
    return places;
}

/// The visits' places below each header, the headers as they stand.
std::vector<std::pair<Date, Places>> days(const std::vector<LibraryEntry>& entries) {
    std::vector<std::pair<Date, Places>> result;
    for (const auto& entry : entries) {
        if (entry.isHeader()) {
            result.push_back({entry.date, {}});
        } else {
            result.back().second.push_back(entry.place);
        }
    }
    return result;
}

// --- What a header says ------------------------------------------------------------------------

TEST_F(LibraryDaysTest, OnlyTheDayOfTodayHasAName) {
    const auto store =
        openLibrary({titled("Before", fromNoon(-2 * day)), titled("Yesterday", fromNoon(-day), b),
                     titled("Today", noon(), c), titled("Ahead", fromNoon(day), d)});
    LibraryView view{*store, world.services};

    EXPECT_EQ(lines(view), (Strings{"[Wednesday, 8 October 2025]", "Ahead", "[Today]", "Today",
                                    "[Monday, 6 October 2025]", "Yesterday",
                                    "[Sunday, 5 October 2025]", "Before"}));
}

TEST_F(LibraryDaysTest, AfterMidnightTodayIsAnotherDayFromTheNextLookOn) {
    const auto store = openLibrary({titled("Noon", noon())});
    LibraryView view{*store, world.services};
    EXPECT_EQ(lines(view), (Strings{"[Today]", "Noon"}));

    world.loop.setNow(fromNoon(12 * hour));
    EXPECT_EQ(lines(view), (Strings{"[Tuesday, 7 October 2025]", "Noon"}));
    visit(*store->active(), b, "Early");

    EXPECT_EQ(lines(view), (Strings{"[Today]", "Early", "[Tuesday, 7 October 2025]", "Noon"}));
}

TEST_F(LibraryDaysTest, DatesAndTimesFollowTheCustomAndTheWordsStayThoseOfTheProgram) {
    EXPECT_EQ(linesIn("de_DE.UTF-8"),
              (Strings{"[Today]", "Now", "[Montag, 6. Oktober 2025]", "Before", "12:00"}));
    EXPECT_EQ(linesIn("fi_FI"),
              (Strings{"[Today]", "Now", "[maanantai 6. lokakuuta 2025]", "Before", "12.00"}));
    EXPECT_EQ(linesIn("ja_JP"),
              (Strings{"[Today]", "Now", "[2025年10月6日月曜日]", "Before", "12:00"}));
    const auto american = linesIn("en_US");
    EXPECT_EQ(american[2], "[Monday, October 6, 2025]");
    EXPECT_TRUE(american[4].starts_with("12:00") && american[4].ends_with("PM")) << american[4];
}

TEST_F(LibraryDaysTest, ALanguageThatReadsFromTheRightHasDatesToo) {
    for (const auto* language : {"ar_EG", "he_IL", "fa_IR", "th_TH"}) {
        const auto said = linesIn(language);

        ASSERT_EQ(said.size(), 5U) << language;
        EXPECT_EQ(said[0], "[Today]") << language;
        EXPECT_GT(said[2].size(), 10U) << language;
        EXPECT_FALSE(said[4].empty()) << language;
    }
}

// --- Which day a visit belongs to --------------------------------------------------------------

TEST_F(LibraryDaysTest, VisitsThatWereMadeInTwoTimeZonesFallIntoTheDaysOfTheCalendarAtHand) {
    using namespace std::chrono;
    // Half past eleven in the evening in Berlin, half past six in the afternoon in New York.
    const auto visits =
        visitsAt({utc(2025y / October / 7, 21h + 30min), utc(2025y / October / 7, 22h + 30min)});

    EXPECT_EQ(days(entriesByDay(visits, {0, 1}, Calendar{"America/New_York"})),
              (std::vector<std::pair<Date, Places>>{{utc(2025y / October / 7, 4h), {0, 1}}}));
    EXPECT_EQ(days(entriesByDay(visits, {0, 1}, Calendar{"Europe/Berlin"})),
              (std::vector<std::pair<Date, Places>>{{utc(2025y / October / 7, 22h), {1}},
                                                    {utc(2025y / October / 6, 22h), {0}}}));
}

TEST_F(LibraryDaysTest, ADayOfTwentyThreeHoursAndOneOfTwentyFiveAreOneDayEach) {
    using namespace std::chrono;
    const Calendar berlin{"Europe/Berlin"};
    const Date spring = utc(2025y / March / 29, 23h);
    const Date autumn = utc(2025y / October / 25, 22h);

    const auto visits = visitsAt({spring, spring.after(23h - 1s), spring.after(23h), autumn,
                                  autumn.after(25h - 1s), autumn.after(25h)});

    EXPECT_EQ(days(entriesByDay(visits, allOf(visits), berlin)),
              (std::vector<std::pair<Date, Places>>{{autumn.after(25h), {5}},
                                                    {autumn, {3, 4}},
                                                    {spring.after(23h), {2}},
                                                    {spring, {0, 1}}}));
}

TEST_F(LibraryDaysTest, WhereTheClockChangesAtMidnightEachVisitHasItsDay) {
    using namespace std::chrono;
    const Date twice = utc(2024y / November / 3, 4h);       // the first hour comes twice
    const Date skipped = utc(2024y / March / 30, 22h);      // the day begins at one o'clock
    const Date noSuchDay = utc(2011y / December / 30, 9h);  // half an hour before a day was skipped

    const auto visits = visitsAt({twice.after(30min), twice.after(90min), twice.after(24h)});
    EXPECT_EQ(days(entriesByDay(visits, {0, 1, 2}, Calendar{"America/Havana"})),
              (std::vector<std::pair<Date, Places>>{{twice, {0, 1, 2}}}));
    const auto others = visitsAt({skipped.after(-1s), skipped, skipped.after(22h)});
    EXPECT_EQ(
        days(entriesByDay(others, {0, 1, 2}, Calendar{"Asia/Beirut"})),
        (std::vector<std::pair<Date, Places>>{{skipped, {1, 2}}, {skipped.after(-24h), {0}}}));
    const auto islands = visitsAt({noSuchDay, noSuchDay.after(2h)});
    EXPECT_EQ(days(entriesByDay(islands, {0, 1}, Calendar{"Pacific/Apia"})),
              (std::vector<std::pair<Date, Places>>{{noSuchDay.after(1h), {1}},
                                                    {noSuchDay.after(-23h), {0}}}));
}

TEST_F(LibraryDaysTest, VisitsInNoOrderStandInTheirDaysInTheOrderOfTheList) {
    const auto visits = visitsAt(
        {fromNoon(0), fromNoon(-day), fromNoon(hour), fromNoon(-hour), fromNoon(-day - hour)});

    EXPECT_EQ(days(entriesByDay(visits, allOf(visits), Calendar{"UTC"})),
              (std::vector<std::pair<Date, Places>>{{fromNoon(-12 * hour), {0, 2, 3}},
                                                    {fromNoon(-12 * hour - day), {1, 4}}}));
}

TEST_F(LibraryDaysTest, WithoutVisitsThereIsNoHeader) {
    EXPECT_TRUE(entriesByDay({}, {}, Calendar{"UTC"}).empty());
}

// --- Laws --------------------------------------------------------------------------------------

/// Every place stands once, in the day of its visit, in the order of the list; days go backwards.
void expectLawful(const std::vector<Visit>& visits, const Places& places,
                  const Calendar& calendar) {
    const auto entries = entriesByDay(visits, places, calendar);
    Places seen;
    std::optional<Date> previous;
    for (const auto& [start, ofDay] : days(entries)) {
        EXPECT_TRUE(!previous || start < *previous);
        previous = start;
        EXPECT_FALSE(ofDay.empty());
        EXPECT_TRUE(std::ranges::is_sorted(ofDay));
        for (const std::size_t place : ofDay) {
            EXPECT_EQ(calendar.startOfDay(visits[place].date), start);
        }
        seen.insert(seen.end(), ofDay.begin(), ofDay.end());
    }
    std::ranges::sort(seen);
    EXPECT_EQ(seen, places);
    for (const auto& entry : entries) {
        if (entry.isHeader()) continue;
        EXPECT_EQ(entry.id, visits[entry.place].id);
        EXPECT_EQ(entry.date, visits[entry.place].date);
    }
}

TEST_F(LibraryDaysTest, WhateverTheHistoryAndTheZoneEachVisitStandsInExactlyItsDay) {
    constexpr std::array zones{"UTC",
                               "Europe/Berlin",
                               "America/Havana",
                               "Asia/Beirut",
                               "Pacific/Apia",
                               "Asia/Kathmandu",
                               "America/St_Johns",
                               "Africa/Cairo",
                               "America/Sao_Paulo",
                               "Atlantic/Azores",
                               "Australia/Lord_Howe",
                               "Nowhere/At_All"};
    RandomText random{92};
    for (int round = 0; round < 240; ++round) {
        // Three years, and a few days that are visited often.
        const double span = round % 2 == 0 ? 1100 * day : 4 * day;
        std::vector<Date> dates;
        for (auto left = random.below(60); left > 0; --left) {
            dates.push_back(fromNoon(-span * static_cast<double>(random.below(10'000)) / 1e4));
        }
        if (round % 3 == 0) std::ranges::sort(dates);
        const auto visits = visitsAt(dates);
        Places places = allOf(visits);
        std::erase_if(places, [&](std::size_t) { return random.below(4) == 0; });

        expectLawful(visits, places, Calendar{zones.at(random.below(zones.size()))});
    }
}

TEST_F(LibraryDaysTest, EachMomentAroundAChangeOfTheClockHasItsDay) {
    using namespace std::chrono;
    const std::vector<std::pair<const char*, Date>> changes{
        {"America/Havana", utc(2024y / November / 3, 5h)},
        {"America/Havana", utc(2024y / March / 10, 5h)},
        {"Asia/Beirut", utc(2024y / March / 30, 22h)},
        {"Asia/Beirut", utc(2024y / October / 26, 21h)},
        {"America/Sao_Paulo", utc(2018y / November / 4, 3h)},
        {"America/Sao_Paulo", utc(2019y / February / 17, 2h)},
        {"Atlantic/Azores", utc(2024y / October / 27, 1h)},
        {"Pacific/Apia", utc(2011y / December / 30, 10h)},
    };
    for (const auto& [zone, change] : changes) {
        std::vector<Date> dates;
        for (int minutes = -40 * 60; minutes <= 40 * 60; minutes += 10) {
            dates.push_back(change.after(std::chrono::minutes{minutes}));
        }
        const auto visits = visitsAt(dates);

        expectLawful(visits, allOf(visits), Calendar{zone});
        const auto found = days(entriesByDay(visits, allOf(visits), Calendar{zone}));
        EXPECT_TRUE(found.size() == 4 || found.size() == 5) << zone << ": " << found.size();
    }
}

}  // namespace
}  // namespace orvu
