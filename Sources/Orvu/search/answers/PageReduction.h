#pragma once

#include "platform/PageReads.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace orvu {

/// What a page of HTML says, as plain text for a reader that needs no more than the beginning. It
/// goes by patterns and not by the rules of HTML: bytes of any kind give a text, in linear time.
class PageReduction {
public:
    /// What is read of a page. What comes behind it has no part in the text.
    static constexpr std::size_t maxBytes = PageReads::maxBytes;
    /// The length of the text, in characters. A character may have any number of bytes.
    static constexpr std::size_t maxCharacters = 1500;

    /// The beginning of what a page says: without scripts, styles, drawings, navigation, heads and
    /// feet, without comments and tags, each of which leaves a space, and with the commonest
    /// entities resolved. Blanks of every kind are one space each run, at the ends too. The page
    /// counts as UTF-8, or as ISO Latin 1 if it is none; the text is UTF-8. Any thread may call it.
    [[nodiscard]] static std::string text(std::string_view html);
};

}  // namespace orvu
