#include "foundation/text/Regex.h"

#include <unicode/regex.h>
#include <unicode/unistr.h>

#include <cassert>
#include <cstdint>
#include <limits>

namespace orvu {
namespace {

/// What a search may take, in the library's own measure: steps that take about a millisecond.
constexpr std::int32_t maxSteps = 20;

icu::UnicodeString wide(std::string_view text) {
    return icu::UnicodeString::fromUTF8({text.data(), static_cast<std::int32_t>(text.size())});
}

}  // namespace

Regex::Regex(std::string_view pattern, LetterCase letterCase) {
    UErrorCode status = U_ZERO_ERROR;
    const std::uint32_t flags = letterCase == LetterCase::ignored ? UREGEX_CASE_INSENSITIVE : 0;
    pattern_.reset(icu::RegexPattern::compile(wide(pattern), flags, status));
    assert(pattern_);
}

std::optional<bool> Regex::isFoundIn(std::string_view text) const {
    if (!pattern_ || text.size() > std::numeric_limits<std::int32_t>::max()) return std::nullopt;
    UErrorCode status = U_ZERO_ERROR;
    const icu::UnicodeString searched = wide(text);  // the matcher only refers to it
    const std::unique_ptr<icu::RegexMatcher> matcher{pattern_->matcher(searched, status)};
    if (U_FAILURE(status)) return std::nullopt;
    matcher->setTimeLimit(maxSteps, status);
    const bool found = matcher->find(status);
    if (U_FAILURE(status)) return std::nullopt;
    return found;
}

}  // namespace orvu
