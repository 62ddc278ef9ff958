#include "foundation/Calendar.h"

#include <unicode/ucal.h>

#include <memory>
#include <string_view>

namespace orvu {
namespace {

struct CloseCalendar {
    void operator()(UCalendar* calendar) const { ucal_close(calendar); }
};
using CalendarHandle = std::unique_ptr<UCalendar, CloseCalendar>;

/// The library's calendar of a zone, set to `date`; nothing if it can't be made.
CalendarHandle openCalendar(const std::string& timeZone, Date date) {
    UErrorCode status = U_ZERO_ERROR;
    const std::u16string zone(timeZone.begin(), timeZone.end());
    CalendarHandle calendar{ucal_open(zone.empty() ? nullptr : zone.data(),
                                      static_cast<int32_t>(zone.size()), "en_US", UCAL_GREGORIAN,
                                      &status)};
    if (U_FAILURE(status)) return nullptr;
    ucal_setMillis(calendar.get(), date.unixSeconds() * 1000.0, &status);
    return U_SUCCESS(status) ? std::move(calendar) : nullptr;
}

std::optional<Date> dateOf(const CalendarHandle& calendar) {
    UErrorCode status = U_ZERO_ERROR;
    const UDate millis = ucal_getMillis(calendar.get(), &status);
    if (U_FAILURE(status)) return std::nullopt;
    return Date::fromUnixSeconds(millis / 1000.0);
}

}  // namespace

Calendar Calendar::current() { return Calendar{""}; }

Date Calendar::startOfDay(Date date) const {
    const auto calendar = openCalendar(timeZone_, date);
    if (!calendar) return date;
    // Where the clock goes back at midnight, the day has its first hour twice.
    ucal_setAttribute(calendar.get(), UCAL_REPEATED_WALL_TIME, UCAL_WALLTIME_FIRST);
    for (const auto field : {UCAL_HOUR_OF_DAY, UCAL_MINUTE, UCAL_SECOND, UCAL_MILLISECOND}) {
        ucal_set(calendar.get(), field, 0);
    }
    return dateOf(calendar).value_or(date);
}

std::optional<Date> Calendar::addingDays(int days, Date date) const {
    const auto calendar = openCalendar(timeZone_, date);
    if (!calendar) return std::nullopt;
    UErrorCode status = U_ZERO_ERROR;
    ucal_add(calendar.get(), UCAL_DAY_OF_MONTH, days, &status);
    if (U_FAILURE(status)) return std::nullopt;
    return dateOf(calendar);
}

}  // namespace orvu
