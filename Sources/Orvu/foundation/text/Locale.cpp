#include "foundation/text/Locale.h"

#include "foundation/text/Text.h"

#include <unicode/udat.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <optional>
#include <string_view>
#include <utility>

namespace orvu {
namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

std::string inCapitals(std::string_view text) {
    std::string result{text};
    for (char& c : result) c = static_cast<char>(c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c);
    return result;
}

/// The script that the modifier of a locale's name stands for, as in "sr_RS@latin".
std::string_view script(std::string_view modifier) {
    constexpr std::array<std::pair<std::string_view, std::string_view>, 3> scripts{
        {{"latin", "-Latn"}, {"cyrillic", "-Cyrl"}, {"devanagari", "-Deva"}}};
    for (const auto& [name, tag] : scripts) {
        if (modifier == name) return tag;
    }
    return {};
}

/// The tag of a locale's name such as "de_AT.UTF-8"; nothing if the name says no language, as
/// "C" does.
std::optional<std::string> languageTag(std::string_view name) {
    const auto modifierAt = std::min(name.find('@'), name.size());
    const std::string modifier = lowercased(name.substr(modifierAt).substr(0, 20));
    name = name.substr(0, std::min(modifierAt, name.find('.')));
    const auto separator = std::min(name.find_first_of("_-"), name.size());
    const auto language = name.substr(0, separator);
    const bool isLanguage =
        (language.size() == 2 || language.size() == 3) && std::ranges::all_of(language, isLetter);
    if (!isLanguage) return std::nullopt;

    std::string tag = lowercased(language);
    if (!modifier.empty()) tag += script(std::string_view{modifier}.substr(1));
    if (separator == name.size()) return tag;
    const auto region = name.substr(separator + 1);
    const bool isRegion = (region.size() == 2 && std::ranges::all_of(region, isLetter)) ||
                          (region.size() == 3 && std::ranges::all_of(region, isDigit));
    if (!isRegion) return std::nullopt;
    return tag + '-' + inCapitals(region);
}

const std::string& firstOf(std::initializer_list<const std::string*> names) {
    const auto* const found =
        std::ranges::find_if(names, [](const std::string* name) { return !name->empty(); });
    return found != names.end() ? **found : **names.begin();
}

std::vector<std::string> languages(const Locale::Environment& environment) {
    const auto own =
        languageTag(firstOf({&environment.all, &environment.messages, &environment.lang}));
    std::vector<std::string> result;
    // The list counts only where messages are translated at all.
    std::string_view rest = own ? environment.language : std::string_view{};
    while (!rest.empty()) {
        const auto name = rest.substr(0, rest.find(':'));
        rest.remove_prefix(std::min(rest.size(), name.size() + 1));
        const auto tag = languageTag(name);
        if (tag && !std::ranges::count(result, *tag)) result.push_back(*tag);
    }
    if (result.empty()) result.push_back(own.value_or("en"));
    return result;
}

struct CloseFormat {
    void operator()(UDateFormat* format) const { udat_close(format); }
};
using FormatHandle = std::unique_ptr<UDateFormat, CloseFormat>;

}  // namespace

/// Writes dates in one way, in the zone that was asked for last.
struct Locale::DateFormat {
    DateFormat(UDateFormatStyle time, UDateFormatStyle day) : timeStyle(time), dayStyle(day) {}

    [[nodiscard]] std::string text(Date date, const std::string& language, const std::string& zone);
    void open(const std::string& language, const std::string& zone);

    const UDateFormatStyle timeStyle;
    const UDateFormatStyle dayStyle;
    std::optional<std::string> timeZone = {};  ///< of the format at hand
    FormatHandle format = nullptr;
};

void Locale::DateFormat::open(const std::string& language, const std::string& zone) {
    UErrorCode status = U_ZERO_ERROR;
    const std::u16string name(zone.begin(), zone.end());
    timeZone = zone;
    format.reset(udat_open(timeStyle, dayStyle, language.c_str(),
                           name.empty() ? nullptr : name.data(), static_cast<int32_t>(name.size()),
                           nullptr, 0, &status));
    if (U_FAILURE(status)) format.reset();
}

std::string Locale::DateFormat::text(Date date, const std::string& language,
                                     const std::string& zone) {
    if (timeZone != zone) open(language, zone);
    if (!format) return {};
    UErrorCode status = U_ZERO_ERROR;
    std::array<char16_t, 128> written{};
    const auto length = udat_format(format.get(), date.unixSeconds() * 1000.0, written.data(),
                                    static_cast<int32_t>(written.size()), nullptr, &status);
    if (U_FAILURE(status)) return {};
    std::string result;
    icu::UnicodeString{written.data(), length}.toUTF8String(result);
    return result;
}

Locale Locale::current() {
    const auto variable = [](const char* name) {
        const char* const value = std::getenv(name);
        return std::string{value ? value : ""};
    };
    return Locale{{.all = variable("LC_ALL"),
                   .time = variable("LC_TIME"),
                   .messages = variable("LC_MESSAGES"),
                   .lang = variable("LANG"),
                   .language = variable("LANGUAGE")}};
}

Locale::Locale(const Environment& environment)
    : languages_(languages(environment)),
      timeLanguage_(languageTag(firstOf({&environment.all, &environment.time, &environment.lang}))
                        .value_or("en")),
      timeFormat_(std::make_shared<DateFormat>(UDAT_SHORT, UDAT_NONE)),
      dayFormat_(std::make_shared<DateFormat>(UDAT_NONE, UDAT_FULL)) {}

std::string Locale::shortTime(Date date, const Calendar& calendar) const {
    return timeFormat_->text(date, timeLanguage_, calendar.timeZone());
}

std::string Locale::completeDate(Date date, const Calendar& calendar) const {
    return dayFormat_->text(date, timeLanguage_, calendar.timeZone());
}

}  // namespace orvu
