#include "shell/menus/ColumnMenus.h"

#include <algorithm>
#include <utility>

namespace orvu {
namespace {

using Kind = MenuEntry::Kind;

MenuEntry separator() { return {.kind = Kind::separator}; }

/// A line that acts on a tab as long as the tab lives.
MenuEntry onTab(std::string title, bool enabled, const std::shared_ptr<BrowserTab>& tab,
                std::function<void(BrowserTab&)> act) {
    const auto run = [target = std::weak_ptr{tab}, act = std::move(act)] {
        if (const auto live = target.lock()) act(*live);
    };
    return {.title = std::move(title), .enabled = enabled, .run = run};
}

/// The groups into which a tab can move. With none left the line stays, greyed.
MenuEntry moveToGroup(BrowserStore& store, const std::shared_ptr<BrowserTab>& tab) {
    MenuEntry menu{.kind = Kind::submenu, .title = "Move to Group"};
    for (const auto& group : store.groups()) {
        if (group.id == tab->groupID()) continue;
        menu.entries.push_back(onTab(group.name, true, tab, [&store, group](BrowserTab& moved) {
            store.moveToGroup(moved, group);
        }));
    }
    menu.enabled = !menu.entries.empty();
    return menu;
}

/// A tab may name a group that has ended: then it is in none.
bool isInGroup(const BrowserStore& store, const BrowserTab& tab) {
    return std::ranges::any_of(store.groups(),
                               [&](const auto& group) { return group.id == tab.groupID(); });
}

void duplicate(BrowserStore& store, const BrowserTab& tab) {
    const auto& tabs = store.tabs();
    const bool stands =
        std::ranges::any_of(tabs, [&](const auto& each) { return each->id() == tab.id(); });
    if (stands && tab.url()) store.newTab(tab.url(), BrowserStore::Select::yes);
}

}  // namespace

std::vector<MenuEntry> tabMenu(BrowserStore& store, const std::shared_ptr<BrowserTab>& tab) {
    const bool page = !tab->isNewTab();
    const bool active = store.activeID() == tab->id();
    const auto line = [&](std::string title, bool enabled, std::function<void(BrowserTab&)> act) {
        return onTab(std::move(title), enabled, tab, std::move(act));
    };
    std::vector<MenuEntry> menu{
        line("Open Side by Side", page && !active,
             [&store](BrowserTab& live) { store.openSideBySide(live); }),
        separator(),
        line("Add to New Group", true, [&store](BrowserTab& live) { store.newGroup(live); }),
    };
    if (!store.groups().empty()) menu.push_back(moveToGroup(store, tab));
    menu.push_back(line("Remove from Group", isInGroup(store, *tab),
                        [&store](BrowserTab& live) { store.removeFromGroup(live); }));
    menu.push_back(separator());
    menu.push_back(line(tab->isPinned() ? "Unpin Tab" : "Pin Tab", true,
                        [&store](BrowserTab& live) { store.togglePin(live); }));
    menu.push_back(
        line("Park on the Shelf", page, [&store](const BrowserTab& live) { store.park(live); }));
    menu.push_back(
        line("Duplicate Tab", page, [&store](const BrowserTab& live) { duplicate(store, live); }));
    menu.push_back(separator());
    menu.push_back(
        line("Close Tab", true, [&store](const BrowserTab& live) { store.close(live); }));
    return menu;
}

std::vector<MenuEntry> groupMenu(BrowserStore& store, const TabGroup& group,
                                 std::function<void()> rename) {
    const bool canRename = static_cast<bool>(rename);
    return {
        {.title = "Rename…", .enabled = canRename, .run = std::move(rename)},
        {.title = "Change Colour", .run = [&store, group] { store.recolor(group); }},
        {.title = "Ungroup", .run = [&store, group] { store.ungroup(group); }},
        separator(),
        {.title = "Close Group", .run = [&store, group] { store.closeGroup(group); }},
    };
}

std::vector<MenuEntry> shelfMenu(BrowserStore& store) {
    std::vector<MenuEntry> menu;
    const auto front = store.active();
    if (front && !front->isNewTab()) {
        menu.push_back(onTab("Park This Tab on the Shelf", true, front,
                             [&store](const BrowserTab& live) { store.park(live); }));
        menu.push_back(separator());
    }
    if (store.shelf().empty()) menu.push_back({.kind = Kind::text, .title = shelfHelp});
    for (const Parked& parked : store.shelf()) {
        const auto open = [&store, parked] {
            const auto& shelf = store.shelf();
            const bool stands = std::ranges::find(shelf, parked.id, &Parked::id) != shelf.end();
            if (stands) store.unpark(parked);
        };
        menu.push_back(
            {.title = parked.title, .run = open, .host = parked.url.host().value_or("")});
    }
    return menu;
}

}  // namespace orvu
