#include "platform/model/MarkedText.h"

#include "foundation/text/Text.h"

#include <algorithm>

namespace orvu {

std::string withMarksBroken(std::string_view text, const std::vector<std::string>& marks) {
    std::string result{text};
    for (const auto& mark : marks) {
        constexpr std::size_t least = 3;  // a shorter one is no mark but a sign
        if (mark.size() < least) continue;
        const std::size_t first = std::max<std::size_t>(1, firstCharacters(mark, 1).size());
        for (auto at = result.find(mark); at != std::string::npos; at = result.find(mark, at)) {
            result.insert(at + first, 1, ' ');
        }
    }
    return result;
}

}  // namespace orvu
