#pragma once

#include <string>
#include <string_view>

namespace orvu {

/// A host as a person is to read it. A name of another script stands in its own letters where they
/// can't be taken for others, and otherwise in the letters that its server is asked by ("xn--…"):
/// where a part of it mixes scripts, or looks like plain Latin letters without being any. What is
/// longer than a host can be loses its head, never the end, which tells whose it is.
[[nodiscard]] std::string displayHost(std::string_view host);

}  // namespace orvu
