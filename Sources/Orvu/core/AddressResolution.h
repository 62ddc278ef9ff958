#pragma once

#include "foundation/Url.h"
#include "profiles/Settings.h"

#include <optional>
#include <string_view>

namespace orvu {

/// Turns what a person typed into an address: a bang and its search, a full address, a bare site
/// or a search with the engine chosen in `settings`, the first that fits. Nothing for blank text,
/// and for a bang or a search whose address can't be made.
[[nodiscard]] std::optional<Url> resolveAddress(std::string_view text, const Settings& settings);

}  // namespace orvu
