#include "search/SuggestionGate.h"

#include "foundation/text/Regex.h"
#include "foundation/text/Text.h"
#include "search/SiteText.h"

namespace orvu {
namespace {

/// "[^\s@]+@[^\s@]+\.[a-z]{2,}" without the run in front, of which one character is enough: to
/// search for all of it takes quadratic time in a text without an "@".
bool holdsMailAddress(std::string_view text) {
    static const Regex pattern{R"((?<=[^\s@])@[^\s@]+\.[a-z]{2,})", Regex::LetterCase::ignored};
    return pattern.isFoundIn(text).value_or(true);
}

bool holdsLongNumber(std::string_view text) {
    static const Regex pattern{R"(\d[\d\s-]{7,}\d)", Regex::LetterCase::significant};
    return pattern.isFoundIn(text).value_or(true);
}

}  // namespace

bool SuggestionGate::allows(std::string_view query) {
    if (query.empty() || query.size() > maxBytes) return false;
    if (firstCharacters(query, maxQueryLength).size() < query.size()) return false;
    return !looksLikeSite(query) && !holdsMailAddress(query) && !holdsLongNumber(query);
}

}  // namespace orvu
