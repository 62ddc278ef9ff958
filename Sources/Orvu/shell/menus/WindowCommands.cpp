#include "shell/menus/WindowCommands.h"

#include "shell/column/ColumnItems.h"

#include <algorithm>
#include <cmath>

namespace orvu {
namespace {

using Target = WindowCommandTarget;

/// A command that needs a tab in front and does nothing without one.
std::function<void(Target&)> onActive(std::function<void(BrowserStore&, BrowserTab&)> run) {
    return [run = std::move(run)](Target& target) {
        if (const auto tab = target.store().active()) run(target.store(), *tab);
    };
}

std::function<void(Target&)> zoom(int steps) {
    return onActive([steps](BrowserStore&, BrowserTab& tab) {
        tab.webView().setPageZoom(PageZoom::stepped(tab.webView().pageZoom(), steps));
    });
}

std::function<void(Target&)> zoomFreely(int steps) {
    return onActive([steps](BrowserStore&, BrowserTab& tab) {
        tab.webView().setPageZoom(PageZoom::steppedFreely(tab.webView().pageZoom(), steps));
    });
}

void newEmptyTab(Target& target) { target.store().newTab(std::nullopt, BrowserStore::Select::yes); }

void newTab(Target& target) {
    newEmptyTab(target);
    target.editAddress("");
}

void editAddress(Target& target) {
    const auto tab = target.store().active();
    target.editAddress(tab && tab->url() ? tab->url()->absoluteString() : "");
}

void toggleBookmark(BrowserStore& store, BrowserTab& tab) {
    if (!store.isPrivate()) store.bookmarks().toggle(tab.url(), tab.title());
}

void toggleGroup(BrowserStore& store, BrowserTab& tab) {
    // A tab may name a group that has ended: then it is in none.
    const auto& groups = store.groups();
    if (std::ranges::find(groups, tab.groupID(), &TabGroup::id) != groups.end()) {
        store.removeFromGroup(tab);
    } else {
        store.newGroup(tab);
    }
}

void copyLink(Target& target) {
    const auto tab = target.store().active();
    if (tab && tab->url()) target.pasteboard().setString(tab->url()->absoluteString());
}

void openInDefaultBrowser(Target& target) {
    const auto tab = target.store().active();
    if (tab && tab->url()) target.workspace().open(*tab->url());
}

void unparkNewest(Target& target) {
    BrowserStore& store = target.store();
    if (!store.shelf().empty()) store.unpark(store.shelf().front());
}

std::function<void(Target&)> selectNeighbour(ColumnStep step) {
    return [step](Target& target) {
        BrowserStore& store = target.store();
        if (const auto tab = neighbourTab(store, step)) store.select(*tab);
    };
}

/// The commands that act on tabs and pages.
std::vector<WindowCommand> pageCommands() {
    return {
        {"newTab", {"⌘T"}, newTab},
        {"newEmptyTab", {}, newEmptyTab},
        {"closeTab", {"⌘W"}, onActive([](auto& store, auto& tab) { store.close(tab); })},
        {"reopenClosed", {"⇧⌘T"}, [](Target& target) { target.store().reopenClosed(); }},
        {"selectNextTab", {"⌘Tab", "⌘Page_Down"}, selectNeighbour(ColumnStep::next)},
        // With Shift this key has a name of its own on some displays.
        {"selectPreviousTab",
         {"⇧⌘Tab", "⇧⌘ISO_Left_Tab", "⌘Page_Up"},
         selectNeighbour(ColumnStep::previous)},
        {"editAddress", {"⌘L"}, editAddress},
        {"endEditing", {}, [](Target& target) { target.endEditing(); }},
        {"focusNextArea", {"F6"}, [](Target& target) { target.focusNextArea(); }},
        {"focusPreviousArea", {"⇧F6"}, [](Target& target) { target.focusPreviousArea(); }},
        {"reload", {"⌘R", "F5"}, onActive([](auto&, auto& tab) { tab.webView().reload(); })},
        {"stopLoading", {}, onActive([](auto&, auto& tab) { tab.webView().stopLoading(); })},
        {"goBack", {"⌘[", "⌥Left"}, onActive([](auto&, auto& tab) { tab.webView().goBack(); })},
        {"goForward", {"⌘]", "⌥Right"}, onActive([](auto&, auto& tab) {
             tab.webView().goForward();
         })},
        {"rewind", {"⇧⌘[", "⇧⌘{", "⇧⌘H"}, [](Target& target) { target.openRewind(); }},
        {"find", {"⌘F"}, [](Target& target) { target.openFind(); }},
        {"findNext", {"⌘G", "F3"}, [](Target& target) { target.findAgain(false); }},
        {"findPrevious", {"⇧⌘G", "⇧F3"}, [](Target& target) { target.findAgain(true); }},
        {"toggleSideBySide", {"⌥⌘S"}, [](Target& target) { target.store().toggleSideBySide(); }},
        {"toggleReader", {"⇧⌘R"}, [](Target& target) { target.store().toggleReader(); }},
        {"toggleBookmark", {"⌘D"}, onActive(toggleBookmark)},
        {"zoomIn", {"⌘=", "⌘+", "⌘KP_Add"}, zoom(+1)},
        {"zoomOut", {"⌘-", "⌘KP_Subtract"}, zoom(-1)},
        {"actualSize", {"⌘0", "⌘KP_0"}, onActive([](auto&, auto& tab) {
             tab.webView().setPageZoom(1.0);
         })},
        {"zoomInFurther", {}, zoomFreely(+1)},
        {"zoomOutFurther", {}, zoomFreely(-1)},
        {"copyLink", {}, copyLink},
        {"openInDefaultBrowser", {}, openInDefaultBrowser},
        {"togglePin", {}, onActive([](auto& store, auto& tab) { store.togglePin(tab); })},
        {"park", {}, onActive([](auto& store, auto& tab) { store.park(tab); })},
        {"unpark", {}, unparkNewest},
        {"toggleGroup", {}, onActive(toggleGroup)},
    };
}

}  // namespace

double PageZoom::stepped(double zoom, int steps) {
    return std::clamp(steppedFreely(zoom, steps), smallest, largest);
}

double PageZoom::steppedFreely(double zoom, int steps) {
    return std::max(std::round((zoom + steps * step) * 10.0) / 10.0, step);
}

std::vector<WindowCommand> windowCommands(const ProfileStore& profiles) {
    auto commands = pageCommands();
    for (int number = 1; number <= 9; ++number) {
        const std::string digit = std::to_string(number);
        commands.push_back({"selectTab" + digit, {"⌘" + digit}, [number](Target& target) {
                                target.store().selectTab(number);
                            }});
        commands.push_back({"profile" + digit, {"⌃" + digit}, [number, &profiles](Target& target) {
                                const auto index = static_cast<std::size_t>(number - 1);
                                if (index >= profiles.profiles().size()) return;
                                const Profile wanted = profiles.profiles()[index];
                                if (wanted.id != target.store().profile().id)
                                    target.switchProfile(wanted);
                            }});
    }
    return commands;
}

}  // namespace orvu
