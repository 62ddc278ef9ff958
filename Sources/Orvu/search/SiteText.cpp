#include "search/SiteText.h"

#include "foundation/text/Text.h"

namespace orvu {

bool looksLikeSite(std::string_view text) {
    const auto typed = trimmed(text, TrimSet::whitespaces);
    if (typed.starts_with("http")) return true;
    return !typed.contains(' ') && typed.contains('.') && !typed.ends_with('.');
}

}  // namespace orvu
