#pragma once

#include "foundation/Url.h"

#include <optional>
#include <string>
#include <string_view>

namespace orvu {

/// Reads the address of something to import: absolute, with the scheme "http" or "https".
[[nodiscard]] std::optional<Url> web(std::string_view text);

/// As `web`, for a bookmark: nothing for an address that is too long to be stored.
[[nodiscard]] std::optional<Url> webBookmark(std::string_view text);

/// A title as it is kept: in UTF-8, its first 1,000 characters.
[[nodiscard]] std::string importedTitle(std::string_view written);

/// The name of a page whose title is empty: its host, or its whole address if it has none.
[[nodiscard]] std::string nameOf(const Url& url);

}  // namespace orvu
