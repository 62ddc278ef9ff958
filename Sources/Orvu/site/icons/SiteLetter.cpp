#include "site/icons/SiteLetter.h"

#include "foundation/text/Text.h"

#include <unicode/locid.h>
#include <unicode/unistr.h>

namespace orvu {

std::string siteLetter(std::string_view host) {
    if (host.empty()) return "+";
    const std::string first = wellFormed(firstCharacters(host, 1));
    std::string letter;
    icu::UnicodeString::fromUTF8(first).toUpper(icu::Locale::getRoot()).toUTF8String(letter);
    return letter;
}

}  // namespace orvu
