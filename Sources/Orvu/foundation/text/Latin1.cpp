#include "foundation/text/Latin1.h"

namespace orvu {

std::string fromLatin1(std::string_view text) {
    std::string result;
    result.reserve(text.size() + text.size() / 4);
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x80) {
            result.push_back(c);
        } else {
            result.push_back(static_cast<char>(0xC0 | (byte >> 6)));
            result.push_back(static_cast<char>(0x80 | (byte & 0x3F)));
        }
    }
    return result;
}

}  // namespace orvu
