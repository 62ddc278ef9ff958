#include "core/BrowserStore.h"

#include <utility>

namespace orvu {

std::shared_ptr<const ReaderArticle> BrowserStore::readerArticle(const BrowserTab& tab) const {
    const bool shows = reader_ && reader_->tab == tab.id() && reader_->article->url == tab.url();
    return shows ? reader_->article : nullptr;
}

void BrowserStore::toggleReader() {
    const auto tab = active();
    if (!tab || tab->isNewTab()) return;
    const bool isReading = reader_ && reader_->tab == tab->id();
    if (!isReading) {
        reading_.keep(read(tab->id(), tab->readerArticle()), tab);
        return;
    }
    const Operation operation{*this};
    reader_.reset();
    changes_.note();
}

/// What comes is shown in a turn of its own: an observer of the change may end the store, and
/// with it this task, which must not end in its own run.
Task<void> BrowserStore::read(Uuid tab, Task<std::optional<ReaderArticle>> reading) {
    auto article = co_await reading;
    if (!article) {
        services_.platform().sound.beep();
        co_return;
    }
    read_ = Reader{tab, std::make_shared<const ReaderArticle>(std::move(*article))};
    showsRead_ = loop_.after(std::chrono::milliseconds{0}, [this] { showRead(); });
}

void BrowserStore::showRead() {
    const Operation operation{*this};
    reader_ = std::exchange(read_, std::nullopt);
    changes_.note();
}

}  // namespace orvu
