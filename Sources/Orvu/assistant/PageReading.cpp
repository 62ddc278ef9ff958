#include "assistant/PageReading.h"

#include <optional>
#include <utility>

namespace orvu {
namespace {

Task<void> tellText(Task<std::string> reading, Promise<std::string> promise) {
    promise.resolve(co_await reading);
}

/// The page without its text; nothing once the tab has gone.
std::optional<Kesto::Page> pageOf(const std::weak_ptr<BrowserTab>& tab) {
    const auto held = tab.lock();
    if (!held) return std::nullopt;
    return Kesto::Page{held->title(), held->url() ? held->url()->absoluteString() : "", ""};
}

}  // namespace

/// The tab is held only where it is asked, so that it can go at the wait.
void PageReader::start(const std::weak_ptr<BrowserTab>& tab,
                       const Promise<std::string>& promise) const {
    if (const auto held = tab.lock()) {
        scope_.start(tellText(held->pageText(Kesto::pageTextLimit), promise));
    }
}

Task<std::vector<Kesto::Page>> PageReader::read(std::vector<std::weak_ptr<BrowserTab>> tabs) const {
    std::vector<Kesto::Page> pages;
    for (const auto& tab : tabs) {
        auto page = pageOf(tab);
        if (!page) continue;
        const Promise<std::string> promise;
        auto text = promise.future();
        const Scheduled patience =
            loop_.after(pageTextPatience, [promise] { promise.resolve(std::string{}); });
        start(tab, promise);
        page->text = co_await text;
        pages.push_back(std::move(*page));
    }
    co_return pages;
}

}  // namespace orvu
