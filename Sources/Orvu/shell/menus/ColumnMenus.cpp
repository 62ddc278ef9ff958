#include "shell/menus/ColumnMenus.h"

#include "foundation/text/Translation.h"
#include "shell/menus/Commands.h"
#include "site/permissions/CaptureSign.h"

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

/// The line of a command about a tab.
MenuEntry line(std::string_view name, BrowserStore& store, const std::shared_ptr<BrowserTab>& tab) {
    const Command& wanted = command(name);
    const CommandSubject subject{store, tab.get()};
    return onTab(wanted.titleFor(subject), wanted.enabled(subject), tab,
                 [&store, act = std::get<Command::ForTab>(wanted.run)](BrowserTab& live) {
                     act(store, live);
                 });
}

/// The line of a command about a group.
MenuEntry line(std::string_view name, BrowserStore& store, const TabGroup& group) {
    const Command& wanted = command(name);
    return {.title = wanted.title,
            .run = [&store, group, act = std::get<Command::ForGroup>(wanted.run)] {
                act(store, group);
            }};
}

/// What the tabs of a group capture together.
ActiveCapture captureOf(const BrowserStore& store, const TabGroup& group) {
    ActiveCapture capture;
    for (const auto& tab : store.tabs(group)) capture = capture | tab->activeCapture();
    return capture;
}

/// Puts `stop`, which ends a capture that is on, at the head of a menu.
void addStop(std::vector<MenuEntry>& menu, MenuEntry stop, ActiveCapture capture) {
    if (!capture.any()) return;
    stop.title = CaptureSign::of(capture).stop;
    menu.insert(menu.begin(), {std::move(stop), separator()});
}

/// The groups into which a tab can move. With none left the line stays, greyed.
MenuEntry moveToGroup(BrowserStore& store, const std::shared_ptr<BrowserTab>& tab) {
    MenuEntry menu{.kind = Kind::submenu, .title = phrase("Move to Group")};
    for (const auto& group : store.groups()) {
        if (group.id == tab->groupID()) continue;
        menu.entries.push_back(onTab(group.name, true, tab, [&store, group](BrowserTab& moved) {
            store.moveToGroup(moved, group);
        }));
    }
    menu.enabled = !menu.entries.empty();
    return menu;
}

}  // namespace

std::vector<MenuEntry> tabMenu(BrowserStore& store, const std::shared_ptr<BrowserTab>& tab) {
    std::vector<MenuEntry> menu{
        line("openSideBySide", store, tab),
        separator(),
        line("newGroup", store, tab),
    };
    if (!store.groups().empty()) menu.push_back(moveToGroup(store, tab));
    menu.push_back(line("removeFromGroup", store, tab));
    menu.push_back(separator());
    for (const auto* const name : {"togglePin", "park", "duplicate"}) {
        menu.push_back(line(name, store, tab));
    }
    menu.push_back(separator());
    menu.push_back(line("closeTab", store, tab));
    addStop(menu, line("stopCapture", store, tab), tab->activeCapture());
    return menu;
}

std::vector<MenuEntry> groupMenu(BrowserStore& store, const TabGroup& group,
                                 std::function<void()> rename) {
    const bool canRename = static_cast<bool>(rename);
    std::vector<MenuEntry> menu{
        {.title = phrase("Rename…"), .enabled = canRename, .run = std::move(rename)},
        line("recolor", store, group),
        line("ungroup", store, group),
        separator(),
        line("closeGroup", store, group),
    };
    addStop(menu, line("stopGroupCapture", store, group), captureOf(store, group));
    return menu;
}

std::vector<MenuEntry> shelfMenu(BrowserStore& store) {
    std::vector<MenuEntry> menu;
    const auto front = store.active();
    if (front && !front->isNewTab()) {
        menu.push_back(line("park", store, front));
        menu.back().title = phrase("Park This Tab on the Shelf");
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
