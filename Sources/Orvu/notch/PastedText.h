#pragma once

#include <string>
#include <string_view>

namespace orvu {

/// A text of several lines as the notch's field takes it: on one line. An address that was broken
/// over lines is joined again; in other text a line's end becomes one space. Blanks around line
/// ends, and line ends at both ends of the text, go. Text of one line stays as it is.
[[nodiscard]] std::string pastedText(std::string_view text);

}  // namespace orvu
