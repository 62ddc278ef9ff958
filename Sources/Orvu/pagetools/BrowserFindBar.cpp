#include "pagetools/BrowserFindBar.h"

#include "foundation/text/Translation.h"

#include <utility>

namespace orvu {

void BrowserFindBar::setText(const std::string& text) {
    if (text == text_) return;
    text_ = text;
    find(false);
}

void BrowserFindBar::find(bool backwards) {
    if (text_.empty()) {
        searching_.cancel();
        return setFound(std::nullopt);
    }
    auto answer = search_(text_, {.backwards = backwards, .wraps = true});
    if (!answer) return;
    searching_.cancel();
    searching_.start(await(std::move(*answer)));
}

Task<void> BrowserFindBar::await(Future<bool> answer) { setFound(co_await answer); }

std::string_view BrowserFindBar::status() const {
    if (!found_ || text_.empty()) return "";
    return *found_ ? phrase("Found") : phrase("No matches");
}

void BrowserFindBar::setFound(std::optional<bool> found) {
    if (found_ == found) return;
    found_ = found;
    changed_.emit();
}

}  // namespace orvu
