#include "shell/menus/BrowserMenu.h"

namespace orvu {

std::vector<MenuItem> browserMenu(const BrowserStore& store) {
    constexpr MenuItem separator{};
    const bool pair = !store.splitTabs().empty();
    const auto tab = store.active();
    const bool reader = tab && store.readerArticle(*tab);
    std::vector<MenuItem> items{
        {"New Tab", "win.newEmptyTab", "⌘T"},
        {"New Private Window", "app.newPrivateWindow", "⇧⌘N"},
        {"Reopen Closed Tab", "win.reopenClosed", "⇧⌘T"},
        separator,
        {pair ? "Back to One Page" : "Side by Side", "win.toggleSideBySide", "⌥⌘S"},
        {reader ? "Exit Reader" : "Reader", "win.toggleReader", "⇧⌘R"},
        {"Find in Page…", "win.find", "⌘F"},
        separator,
        {"Zoom In", "win.zoomInFurther", "⌘="},
        {"Zoom Out", "win.zoomOutFurther", "⌘-"},
        {"Actual Size", "win.actualSize", "⌘0"},
    };
    if (tab && tab->url()) {
        items.push_back(separator);
        items.push_back({"Copy Link", "win.copyLink", ""});
        items.push_back({"Open in Default Browser", "win.openInDefaultBrowser", ""});
    }
    return items;
}

}  // namespace orvu
