#include "shell/menus/BrowserMenu.h"

#include <initializer_list>

namespace orvu {

std::vector<MenuItem> browserMenu(const BrowserStore& store) {
    const auto tab = store.active();
    const CommandSubject subject{store, tab.get()};
    std::vector<MenuItem> items;
    const auto add = [&](std::initializer_list<std::string_view> names) {
        if (!items.empty()) items.emplace_back();
        for (const auto name : names) items.emplace_back(command(name), subject);
    };
    add({"newEmptyTab", "newPrivateWindow", "reopenClosed"});
    add({"toggleSideBySide", "toggleReader", "find"});
    add({"showHistory", "showBookmarks", "showRecentlyClosed", "zoomInFurther", "zoomOutFurther",
         "actualSize"});
    if (command("copyLink").enabled(subject)) add({"copyLink", "openInDefaultBrowser"});
    return items;
}

}  // namespace orvu
