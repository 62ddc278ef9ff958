#include "foundation/text/Latin1.h"

#include <algorithm>

namespace orvu {

std::string fromLatin1(std::string_view text) {
    const auto isDouble = [](char c) { return static_cast<unsigned char>(c) >= 0x80; };
    const auto others = static_cast<std::size_t>(std::ranges::count_if(text, isDouble));
    std::string result(text.size() + others, '\0');
    auto end = result.begin();
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (!isDouble(c)) {
            *end++ = c;
        } else {
            *end++ = static_cast<char>(0xC0 | (byte >> 6));
            *end++ = static_cast<char>(0x80 | (byte & 0x3F));
        }
    }
    return result;
}

}  // namespace orvu
