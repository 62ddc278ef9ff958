#pragma once

#include "foundation/Url.h"

#include <string>

namespace orvu {

/// Where a link leads, as the card says it while the pointer is over the link: on one line, the
/// host as it is told everywhere, no name and password before it, and no longer than 200 characters.
[[nodiscard]] std::string linkAddress(const Url& link);

}  // namespace orvu
