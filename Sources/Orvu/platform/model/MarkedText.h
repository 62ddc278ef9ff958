#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orvu {

/// A text in which none of `marks` stands any more: a blank goes behind the first character of each
/// that did. So a page can't end a question and begin one of its own.
[[nodiscard]] std::string withMarksBroken(std::string_view text,
                                          const std::vector<std::string>& marks);

}  // namespace orvu
