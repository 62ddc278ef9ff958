#pragma once

#include "foundation/Date.h"

#include <optional>
#include <string>

namespace orvu {

/// The Gregorian calendar in one time zone.
class Calendar {
public:
    /// The calendar of the user's own time zone.
    [[nodiscard]] static Calendar current();
    /// `timeZone` is an Olson name such as "Europe/Berlin"; an unknown one counts as UTC.
    explicit Calendar(std::string timeZone) : timeZone_(std::move(timeZone)) {}

    /// The Olson name of the zone; empty for the user's own.
    [[nodiscard]] const std::string& timeZone() const { return timeZone_; }
    /// The first moment of the day in which `date` lies.
    [[nodiscard]] Date startOfDay(Date date) const;
    /// The date `days` calendar days later (earlier if negative), at the same time of day;
    /// nothing if the calendar can't tell.
    [[nodiscard]] std::optional<Date> addingDays(int days, Date date) const;

private:
    std::string timeZone_;
};

}  // namespace orvu
