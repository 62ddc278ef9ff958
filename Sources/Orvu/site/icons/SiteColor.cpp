#include "site/icons/SiteColor.h"

#include "foundation/text/Text.h"
#include "look/Desk.h"

#include <cstdint>

namespace orvu {

Color SiteColor::of(std::string_view name) {
    if (name.empty()) return Desk::line;
    std::uint64_t sum = 0;
    for (std::size_t at = 0; at < name.size();) {
        const int codePoint = nextCodePoint(name, at);
        if (codePoint > 0) sum += static_cast<std::uint64_t>(codePoint);
    }
    return palette[sum % palette.size()];
}

}  // namespace orvu
