#include "profiles/Setting.h"

#include "profiles/Preferences.h"

#include <charconv>
#include <cmath>

namespace orvu {
namespace {

template <class Number>
Number numberIn(std::string_view text) {
    Number number{};
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

}  // namespace

bool SettingFormat<bool>::fromTable(std::string_view unset) { return unset == "true"; }

bool SettingFormat<bool>::read(const UserDefaults& defaults, std::string_view key, bool unset) {
    return Prefs::boolean(defaults, key, unset);
}

void SettingFormat<bool>::write(UserDefaults& defaults, std::string_view key, bool value) {
    defaults.setBoolean(key, value);
}

std::int64_t SettingFormat<std::int64_t>::fromTable(std::string_view unset) {
    return numberIn<std::int64_t>(unset);
}

std::int64_t SettingFormat<std::int64_t>::read(const UserDefaults& defaults, std::string_view key,
                                               std::int64_t unset) {
    return defaults.integer(key).value_or(unset);
}

void SettingFormat<std::int64_t>::write(UserDefaults& defaults, std::string_view key,
                                        std::int64_t value) {
    defaults.setInteger(key, value);
}

double SettingFormat<double>::fromTable(std::string_view unset) { return numberIn<double>(unset); }

double SettingFormat<double>::read(const UserDefaults& defaults, std::string_view key,
                                   double unset) {
    const double stored = defaults.number(key).value_or(unset);
    return std::isfinite(stored) ? stored : unset;
}

void SettingFormat<double>::write(UserDefaults& defaults, std::string_view key, double value) {
    defaults.setNumber(key, value);
}

std::string SettingFormat<std::string>::read(const UserDefaults& defaults, std::string_view key,
                                             const std::string& unset) {
    return defaults.string(key).value_or(unset);
}

void SettingFormat<std::string>::write(UserDefaults& defaults, std::string_view key,
                                       const std::string& value) {
    defaults.setString(key, value);
}

}  // namespace orvu
