#pragma once

#include "foundation/Calendar.h"
#include "foundation/Date.h"

#include <memory>
#include <string>
#include <vector>

namespace orvu {

/// The languages and customs of the person at the desk.
class Locale {
public:
    /// What the environment says of them, each empty if it says nothing.
    struct Environment {
        std::string all = {};       ///< LC_ALL
        std::string time = {};      ///< LC_TIME
        std::string messages = {};  ///< LC_MESSAGES
        std::string lang = {};      ///< LANG
        std::string language = {};  ///< LANGUAGE, a list with colons between
    };

    /// Of the environment in which this process was started.
    [[nodiscard]] static Locale current();
    explicit Locale(const Environment& environment);

    /// Tags of BCP 47, the most wanted first; "en" alone if the environment names no language.
    [[nodiscard]] const std::vector<std::string>& preferredLanguages() const { return languages_; }
    /// The time of day, without a date and as short as is the custom, in the calendar's zone.
    /// Empty if there is none to be had.
    [[nodiscard]] std::string shortTime(Date date, const Calendar& calendar) const;
    /// The day with its weekday, month in words and year, without a time, in the calendar's zone.
    /// Empty if there is none to be had.
    [[nodiscard]] std::string completeDate(Date date, const Calendar& calendar) const;

private:
    struct DateFormat;

    std::vector<std::string> languages_;
    std::string timeLanguage_;
    /// The formats used last, since making one takes far longer than using it. Copies share them.
    std::shared_ptr<DateFormat> timeFormat_;
    std::shared_ptr<DateFormat> dayFormat_;
};

}  // namespace orvu
