#include "look/text/TextDirection.h"

#include "foundation/text/Text.h"

#include <unicode/uchar.h>

namespace orvu {

bool runsLeftwards(std::string_view text) {
    for (std::size_t at = 0; at < text.size();) {
        const int codePoint = nextCodePoint(text, at);
        if (codePoint < 0) continue;
        switch (u_charDirection(codePoint)) {
            case U_LEFT_TO_RIGHT:
                return false;
            case U_RIGHT_TO_LEFT:
            case U_RIGHT_TO_LEFT_ARABIC:
                return true;
            default:
                break;
        }
    }
    return false;
}

}  // namespace orvu
