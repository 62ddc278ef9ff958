#include "shell/ShownTitle.h"

#include "foundation/Text.h"

namespace orvu {
namespace {

/// More than any help text shows, and little enough to lay out at once.
constexpr std::size_t titleLimit = 300;

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

std::string shownTitle(const BrowserTab& tab) {
    std::string title = oneLine(tab.title(), titleLimit);
    if (title.empty() && tab.url()) title = oneLine(siteName(*tab.url()), titleLimit);
    return title.empty() ? "New tab" : title;
}

}  // namespace orvu
