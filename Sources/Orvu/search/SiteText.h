#pragma once

#include <string_view>

namespace orvu {

/// Whether typed text is to be taken for the address of a site, and not for a search. All that
/// begins with "http" is; else it needs a full stop, not at its end, and no space.
[[nodiscard]] bool looksLikeSite(std::string_view text);

}  // namespace orvu
