#include "assistant/PageReading.h"

#include "platform/Within.h"

#include <optional>
#include <utility>

namespace orvu {
namespace {

/// The page without its text; nothing once the tab has gone.
std::optional<Kesto::Page> pageOf(const std::weak_ptr<BrowserTab>& tab) {
    const auto held = tab.lock();
    if (!held) return std::nullopt;
    return Kesto::Page{held->title(), held->url() ? held->url()->absoluteString() : "", ""};
}

}  // namespace

/// The tab is held only where it is asked, so that it can go at the wait.
Task<std::string> PageReader::textOf(std::weak_ptr<BrowserTab> tab) {
    auto held = tab.lock();
    if (!held) co_return std::string{};
    auto text = held->pageText(Kesto::pageTextLimit);
    held.reset();
    co_return co_await text;
}

Task<std::vector<Kesto::Page>> PageReader::read(std::vector<std::weak_ptr<BrowserTab>> tabs) const {
    std::vector<Kesto::Page> pages;
    for (const auto& tab : tabs) {
        auto page = pageOf(tab);
        if (!page) continue;
        auto text = within(&loop_, pageTextPatience, textOf(tab), std::string{});
        page->text = co_await text;
        pages.push_back(std::move(*page));
    }
    co_return pages;
}

}  // namespace orvu
