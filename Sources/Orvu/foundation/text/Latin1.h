#pragma once

#include <string>
#include <string_view>

namespace orvu {

/// Text in ISO Latin 1, of which every byte is a character, as UTF-8.
[[nodiscard]] std::string fromLatin1(std::string_view text);

}  // namespace orvu
