#pragma once

#include "foundation/Url.h"

#include <optional>

namespace orvu {

/// Where the source of a page stands, "view-source:" and the page's own address; that of a source is
/// the same.
[[nodiscard]] std::optional<Url> sourceAddress(const Url& page);

/// The page whose source stands at `address`; nothing for all other addresses.
[[nodiscard]] std::optional<Url> pageOfSource(const Url& address);

}  // namespace orvu
