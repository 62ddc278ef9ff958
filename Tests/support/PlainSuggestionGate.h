#pragma once

#include "foundation/text/Regex.h"
#include "foundation/text/Text.h"
#include "notch/AddressNotch.h"

#include <string_view>

namespace orvu {

/// What `SuggestionGate` promises, written down as it is told and whatever it costs.
inline bool plainGateLets(std::string_view text) {
    static const Regex mail{R"([^\s@]+@[^\s@]+\.[a-z]{2,})", Regex::LetterCase::ignored};
    static const Regex number{R"(\d[\d\s-]{7,}\d)", Regex::LetterCase::significant};
    return !text.empty() && characterCount(text) <= 120 && !mail.isFoundIn(text).value() &&
           !number.isFoundIn(text).value() && !AddressNotch::looksLikeSite(text);
}

}  // namespace orvu
