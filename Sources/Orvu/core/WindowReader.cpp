#include "core/WindowReader.h"

#include <utility>

namespace orvu {

std::shared_ptr<const ReaderArticle> WindowReader::article(const BrowserTab& tab) const {
    const bool shows = shown_ && shown_->tab == tab.id() && shown_->article->url == tab.url();
    return shows ? shown_->article : nullptr;
}

void WindowReader::toggle(const std::shared_ptr<BrowserTab>& tab) {
    if (shown_ && shown_->tab == tab->id()) return show(std::nullopt);
    tasks_.start(read(tab->id(), tab->readerArticle()));
}

Task<void> WindowReader::read(Uuid tab, Task<std::optional<ReaderArticle>> reading) {
    auto article = co_await reading;
    if (article) {
        // Last: who hears of it may end this.
        show(Shown{tab, std::make_shared<const ReaderArticle>(std::move(*article))});
    } else {
        sound_.beep();
    }
}

void WindowReader::show(std::optional<Shown> shown) {
    shown_ = std::move(shown);
    changed_.emit();
}

}  // namespace orvu
