#include "look/text/OneLine.h"

#include "foundation/text/Text.h"

namespace orvu {
namespace {

bool breaksLine(int codePoint) {
    constexpr int lineSeparator = 0x2028;
    constexpr int paragraphSeparator = 0x2029;
    return codePoint < 0x20 || (codePoint >= 0x7F && codePoint < 0xA0) ||
           codePoint == lineSeparator || codePoint == paragraphSeparator;
}

}  // namespace

std::string oneLine(std::string_view text, std::size_t limit) {
    const std::string clean = wellFormed(text);
    const std::string_view rest = trimmed(clean, TrimSet::whitespacesAndNewlines);
    std::string line;
    std::size_t count = 0;
    for (std::size_t at = 0; at < rest.size(); ++count) {
        if (count == limit) return line + "…";
        const std::size_t begin = at;
        if (!breaksLine(nextCodePoint(rest, at))) {
            line.append(rest.substr(begin, at - begin));
        } else if (!line.ends_with(' ')) {
            line.push_back(' ');
        }
    }
    return std::string{trimmed(line, TrimSet::whitespacesAndNewlines)};
}

}  // namespace orvu
