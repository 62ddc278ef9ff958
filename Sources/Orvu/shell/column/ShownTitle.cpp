#include "shell/column/ShownTitle.h"

#include "foundation/text/Translation.h"
#include "look/text/OneLine.h"

namespace orvu {
namespace {

/// More than any help text shows, and little enough to lay out at once.
constexpr std::size_t titleLimit = 300;

}  // namespace

std::string shownTitle(const BrowserTab& tab) {
    std::string title = oneLine(tab.title(), titleLimit);
    if (title.empty() && tab.url()) title = oneLine(siteName(*tab.url()), titleLimit);
    return title.empty() ? std::string{phrase("New tab")} : title;
}

}  // namespace orvu
