#include "platform/SpellingLanguages.h"

#include <algorithm>
#include <string_view>

namespace orvu {
namespace {

constexpr std::size_t most = 3;

bool isSmall(char c) { return c >= 'a' && c <= 'z'; }
bool isCapital(char c) { return c >= 'A' && c <= 'Z'; }

/// A language of two or three letters, and perhaps a region of two.
bool isLanguage(std::string_view name) {
    const auto language = name.substr(0, name.find('_'));
    if (language.size() < 2 || language.size() > 3) return false;
    if (!std::ranges::all_of(language, isSmall)) return false;
    if (language.size() == name.size()) return true;
    const auto region = name.substr(language.size() + 1);
    return region.size() == 2 && std::ranges::all_of(region, isCapital);
}

bool isRegionOf(std::string_view name, std::string_view language) {
    return name.size() > language.size() && name.starts_with(language) &&
           name[language.size()] == '_';
}

}  // namespace

std::vector<std::string> spellingLanguages(const std::vector<std::string>& localeNames) {
    std::vector<std::string> languages;
    for (const std::string_view locale : localeNames) {
        // What stands behind are an encoding and a variant.
        const auto name = locale.substr(0, locale.find_first_of(".@"));
        const bool isKnown = std::ranges::any_of(languages, [&](const std::string& known) {
            return known == name || isRegionOf(known, name);
        });
        if (!isLanguage(name) || isKnown) continue;
        languages.emplace_back(name);
        if (languages.size() == most) break;
    }
    return languages;
}

}  // namespace orvu
