#pragma once

#include <string>
#include <vector>

namespace orvu {

/// The languages in which to check what a person writes, the best one first, as dictionaries are
/// named ("de_AT", "en"). `localeNames` are the person's locales in their order, such as
/// "de_AT.UTF-8@euro"; whatever names no language is left out, and so is a language alone after one
/// of its regions. There are at most three, for each dictionary costs memory and time; none if the
/// locales tell nothing of a language, as "C" doesn't.
[[nodiscard]] std::vector<std::string> spellingLanguages(
    const std::vector<std::string>& localeNames);

}  // namespace orvu
