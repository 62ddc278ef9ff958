#pragma once

#include <string>
#include <string_view>

namespace orvu {

/// What stands for a site that has no icon: the first character of its host in upper case, or "+"
/// without a host.
[[nodiscard]] std::string siteLetter(std::string_view host);

}  // namespace orvu
