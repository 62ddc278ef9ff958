#include "shell/menus/Commands.h"

#include "foundation/text/Translation.h"
#include "look/text/PlatformText.h"
#include "shell/BrowserView.h"
#include "shell/OrvuApp.h"
#include "shell/TabCloser.h"
#include "shell/column/ColumnItems.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <iterator>

namespace orvu {
namespace {

using Subject = CommandSubject;
using Commands = std::vector<Command>;
using KeysOf = Command::KeysOf;

/// How tables and people name one of the few keys whose names have several words.
std::string keyLabel(std::string_view keys) {
    std::string label = platformText(keys);
    std::ranges::replace(label, '_', ' ');
    return label;
}

// --- Conditions -------------------------------------------------------------------------------

bool hasAddress(const Subject& subject) { return subject.tab && subject.tab->url(); }

bool hasPage(const Subject& subject) { return subject.tab && !subject.tab->isNewTab(); }

bool isPinned(const Subject& subject) { return subject.tab && subject.tab->isPinned(); }

bool isReading(const Subject& subject) {
    return subject.tab && subject.store.readerArticle(*subject.tab);
}

bool isPair(const Subject& subject) { return !subject.store.splitTabs().empty(); }

bool captures(const Subject& subject) { return subject.tab && subject.tab->activeCapture().any(); }

bool isBesideFront(const Subject& subject) {
    return hasPage(subject) && subject.store.activeID() != subject.tab->id();
}

bool isInGroup(const Subject& subject) {
    return subject.tab && subject.store.groupOf(*subject.tab) != nullptr;
}

// --- What commands do -------------------------------------------------------------------------

void newEmptyTab(BrowserView& view) {
    view.store().newTab(std::nullopt, BrowserStore::Select::yes);
}

void newTab(BrowserView& view) {
    newEmptyTab(view);
    view.editAddress("");
}

void editAddress(BrowserView& view) {
    const auto tab = view.store().active();
    view.editAddress(tab && tab->url() ? tab->url()->absoluteString() : "");
}

void toggleBookmark(BrowserStore& store, BrowserTab& tab) {
    if (!store.isPrivate()) store.bookmarks().toggle(tab.url(), tab.title());
}

void toggleGroup(BrowserStore& store, BrowserTab& tab) {
    if (isInGroup({store, &tab})) {
        store.removeFromGroup(tab);
    } else {
        store.newGroup(tab);
    }
}

void stopGroupCapture(BrowserStore& store, const TabGroup& group) {
    for (const auto& tab : store.tabs(group)) tab->stopCapture();
}

void duplicate(BrowserStore& store, BrowserTab& tab) {
    if (store.holds(tab) && tab.url()) store.newTab(tab.url(), BrowserStore::Select::yes);
}

void copyLink(BrowserView& view) {
    const auto tab = view.store().active();
    if (tab && tab->url())
        view.services().platform().pasteboard.setString(tab->url()->absoluteString());
}

/// What the page answers is awaited without holding its tab. It is work of that store.
Task<void> openSource(BrowserStore* store, Url page, Future<std::optional<std::string>> source) {
    auto text = co_await source;
    if (!text) co_return;
    auto& tab = store->newTab(std::nullopt, BrowserStore::Select::yes);
    tab.webView().showSource(page, std::move(*text));
}

void showSource(BrowserStore& store, BrowserTab& tab) {
    if (tab.url()) store.work().start(openSource(&store, *tab.url(), tab.webView().source()));
}

void openInDefaultBrowser(BrowserView& view) {
    const auto tab = view.store().active();
    if (tab && tab->url()) view.services().platform().workspace.open(*tab->url());
}

void unparkNewest(BrowserView& view) {
    BrowserStore& store = view.store();
    if (!store.shelf().empty()) store.unpark(store.shelf().front());
}

Command::ForWindow showLibrary(LibrarySection section) {
    return [section](BrowserView& view) {
        view.commandOpen.set(false);
        view.store().setLibrarySection(section);
    };
}

Command::ForWindow selectNeighbour(ColumnStep step) {
    return [step](BrowserView& view) {
        if (const auto tab = neighbourTab(view.store(), step)) view.store().select(*tab);
    };
}

Command::ForTab onPage(void (WebView::*act)()) {
    return [act](BrowserStore&, BrowserTab& tab) { (tab.webView().*act)(); };
}

Command::ForTab zoom(double (*stepped)(double, int), int steps) {
    return [stepped, steps](BrowserStore&, BrowserTab& tab) {
        tab.webView().setPageZoom(stepped(tab.webView().pageZoom(), steps));
    };
}

Command::ForWindow onWindow(void (BrowserWindow::*act)()) {
    return [act](BrowserView& view) { (view.window().*act)(); };
}

Command::ForWindow edit(EditingCommand which) {
    return [which](BrowserView& view) { view.window().edit(which); };
}

Command::ForApplication onApplication(void (AppDelegate::*act)()) {
    return [act](AppDelegate& application) { (application.*act)(); };
}

template <class Act>
Command::ForWindow onView(Act act) {
    return [act](BrowserView& view) { (view.*act)(); };
}

template <class Act>
Command::ForWindow onStore(Act act) {
    return [act](BrowserView& view) { (view.store().*act)(); };
}

// --- The table --------------------------------------------------------------------------------

Commands addressAndTabs() {
    return {
        {.name = "editAddress",
         .run = Command::ForWindow{editAddress},
         .keys = {"⌘L", "⌥D"},
         .help = "open the notch: type an address or a search"},
        {.name = "openEmptyNotch",
         .run = Command::ForWindow{[](BrowserView& view) { view.editAddress(""); }},
         .keys = {"⌘K"},
         .help = "the same, empty"},
        {.name = "newTab",
         .run = Command::ForWindow{newTab},
         .title = phrase("New Tab"),
         .keys = {"⌘T"},
         .help = "a new tab"},
        {.name = "newEmptyTab",
         .run = Command::ForWindow{newEmptyTab},
         .title = phrase("New Tab"),
         .showsKeyOf = "newTab"},
        {.name = "closeTab",
         .run = Command::ForTab{[](auto& store, auto& tab) { TabCloser{store}.close(tab); }},
         .title = phrase("Close Tab"),
         .keys = {"⌘W"},
         .help = "close the tab"},
        {.name = "reopenClosed",
         .run = onStore(&BrowserStore::reopenClosed),
         .title = phrase("Reopen Closed Tab"),
         .keys = {"⇧⌘T"},
         .help = "bring back the tab that was closed last"},
        {.name = "selectNextTab",
         .run = selectNeighbour(ColumnStep::next),
         .keys = {"⌘Tab", "⌘Page_Down"},
         .help = "the next tab of the column"},
        {.name = "selectPreviousTab",
         .run = selectNeighbour(ColumnStep::previous),
         .keys = {"⇧⌘Tab", "⌘Page_Up"},
         // With Shift this key has a name of its own on some displays.
         .alias = {"⇧⌘ISO_Left_Tab"},
         .help = "the tab before it"},
        {.name = "toggleKesto",
         .run = Command::ForWindow{[](BrowserView& view) {
             view.kestoOpen.set(!view.kestoOpen.get());
         }},
         .keys = {"⌘J"},
         .help = "the assistant's panel, and away"},
        {.name = "toggleSideBySide",
         .run = onStore(&BrowserStore::toggleSideBySide),
         .title = phrase("Side by Side"),
         .titleOn = phrase("Back to One Page"),
         .keys = {"⌥⌘S"},
         .help = "two tabs side by side, and back to one",
         .isOn = isPair},
    };
}

Commands page() {
    return {
        {.name = "goBack",
         .run = onPage(&WebView::goBack),
         .keys = {"⌘[", "⌥Left"},
         .keysOf = KeysOf::pageFirst,
         .help = "back"},
        {.name = "goForward",
         .run = onPage(&WebView::goForward),
         .keys = {"⌘]", "⌥Right"},
         .keysOf = KeysOf::pageFirst,
         .help = "forward"},
        {.name = "reload",
         .run = onPage(&WebView::reload),
         .keys = {"⌘R", "F5"},
         .help = "load the page anew"},
        {.name = "stopLoading", .run = onPage(&WebView::stopLoading)},
        {.name = "rewind",
         .run = onView(&BrowserView::openRewind),
         .keys = {"⇧⌘H", "⇧⌘["},
         .alias = {"⇧⌘{"},
         .keysOf = KeysOf::pageFirst,
         .help = "rewind: the pages of today"},
        {.name = "find",
         .run = onView(&BrowserView::openFind),
         .title = phrase("Find in Page…"),
         .keys = {"⌘F"},
         .keysOf = KeysOf::pageFirst,
         .help = "find in the page"},
        {.name = "findNext",
         .run = Command::ForWindow{[](auto& view) { view.findAgain(FindDirection::next); }},
         .keys = {"⌘G", "F3"},
         .keysOf = KeysOf::pageFirst,
         .help = "the next match"},
        {.name = "findPrevious",
         .run = Command::ForWindow{[](auto& view) { view.findAgain(FindDirection::previous); }},
         .keys = {"⇧⌘G", "⇧F3"},
         .keysOf = KeysOf::pageFirst,
         .help = "the match before it"},
        {.name = "toggleReader",
         .run = onStore(&BrowserStore::toggleReader),
         .title = phrase("Reader"),
         .titleOn = phrase("Exit Reader"),
         .keys = {"⇧⌘R"},
         .help = "the reader: the article alone, and back",
         .isOn = isReading},
        {.name = "toggleBookmark",
         .run = Command::ForTab{toggleBookmark},
         .keys = {"⌘D"},
         .help = "set or clear a bookmark"},
    };
}

Commands library() {
    return {
        {.name = "showHistory",
         .run = showLibrary(LibrarySection::history),
         .title = phrase("History"),
         .keys = {"⌘Y"},
         .alias = {"⌘H"},
         .keysOf = KeysOf::pageFirst,
         .help = "the history"},
        {.name = "showBookmarks",
         .run = showLibrary(LibrarySection::bookmarks),
         .title = phrase("Bookmarks"),
         .keys = {"⌥⌘B"},
         .keysOf = KeysOf::pageFirst,
         .help = "the bookmarks"},
        {.name = "showRecentlyClosed",
         .run = showLibrary(LibrarySection::closed),
         .title = phrase("Recently Closed")},
    };
}

Commands pageAsAWhole() {
    return {
        {.name = "inspect",
         .run = onPage(&WebView::showInspector),
         .title = phrase("Inspect"),
         .keys = {"F12", "⇧⌘I"},
         .keysOf = KeysOf::pageFirst,
         .help = "how the page is built",
         .isEnabled = hasPage},
        {.name = "copyLink",
         .run = Command::ForWindow{copyLink},
         .title = phrase("Copy Link"),
         .isEnabled = hasAddress},
        {.name = "print",
         .run = onPage(&WebView::print),
         .title = phrase("Print…"),
         .keys = {"⌘P"},
         .keysOf = KeysOf::pageFirst,
         .help = "print the page",
         .isEnabled = hasPage},
        {.name = "savePage",
         .run = onPage(&WebView::savePage),
         .title = phrase("Save Page"),
         .keys = {"⌘S"},
         .keysOf = KeysOf::pageFirst,
         .help = "save the page among the downloads",
         .isEnabled = hasPage},
        {.name = "showSource",
         .run = Command::ForTab{showSource},
         .title = phrase("Page Source"),
         .keys = {"⌘U"},
         .keysOf = KeysOf::pageFirst,
         .help = "the page's source, in a tab of its own",
         .isEnabled = hasPage},
        {.name = "openInDefaultBrowser",
         .run = Command::ForWindow{openInDefaultBrowser},
         .title = phrase("Open in Default Browser"),
         .isEnabled = hasAddress},
    };
}

Commands zooming() {
    return {
        {.name = "zoomIn",
         .run = zoom(&PageZoom::stepped, +1),
         .keys = {"⌘="},
         .alias = {"⌘+", "⌘KP_Add"},
         .keysOf = KeysOf::pageFirst,
         .help = "zoom in"},
        {.name = "zoomInFurther",
         .run = zoom(&PageZoom::steppedFreely, +1),
         .title = phrase("Zoom In"),
         .showsKeyOf = "zoomIn"},
        {.name = "zoomOut",
         .run = zoom(&PageZoom::stepped, -1),
         .keys = {"⌘-"},
         .alias = {"⌘KP_Subtract"},
         .keysOf = KeysOf::pageFirst,
         .help = "zoom out"},
        {.name = "zoomOutFurther",
         .run = zoom(&PageZoom::steppedFreely, -1),
         .title = phrase("Zoom Out"),
         .showsKeyOf = "zoomOut"},
        {.name = "actualSize",
         .run = Command::ForTab{[](auto&, auto& tab) { tab.webView().setPageZoom(1.0); }},
         .title = phrase("Actual Size"),
         .keys = {"⌘0"},
         .alias = {"⌘KP_0"},
         .keysOf = KeysOf::pageFirst,
         .help = "actual size"},
    };
}

Commands arranging() {
    return {
        {.name = "openSideBySide",
         .run = Command::ForTab{[](auto& store, auto& tab) { store.openSideBySide(tab); }},
         .title = phrase("Open Side by Side"),
         .isEnabled = isBesideFront},
        {.name = "newGroup",
         .run = Command::ForTab{[](auto& store, auto& tab) { store.newGroup(tab); }},
         .title = phrase("Add to New Group")},
        {.name = "removeFromGroup",
         .run = Command::ForTab{[](auto& store, auto& tab) { store.removeFromGroup(tab); }},
         .title = phrase("Remove from Group"),
         .isEnabled = isInGroup},
        {.name = "toggleGroup", .run = Command::ForTab{toggleGroup}},
        {.name = "togglePin",
         .run = Command::ForTab{[](auto& store, auto& tab) { store.togglePin(tab); }},
         .title = phrase("Pin Tab"),
         .titleOn = phrase("Unpin Tab"),
         .isOn = isPinned},
        {.name = "park",
         .run = Command::ForTab{[](auto& store, auto& tab) { TabCloser{store}.park(tab); }},
         .title = phrase("Park on the Shelf"),
         .isEnabled = hasPage},
        {.name = "unpark", .run = Command::ForWindow{unparkNewest}},
        {.name = "duplicate",
         .run = Command::ForTab{duplicate},
         .title = phrase("Duplicate Tab"),
         .isEnabled = hasPage},
        {.name = "stopCapture",
         .run = Command::ForTab{[](auto&, auto& tab) { tab.stopCapture(); }},
         .title = phrase("Stop Camera and Microphone"),
         .isEnabled = captures},
        {.name = "stopGroupCapture",
         .run = Command::ForGroup{stopGroupCapture},
         .title = phrase("Stop Camera and Microphone")},
        {.name = "recolor",
         .run = Command::ForGroup{[](auto& store, auto& group) { store.recolor(group); }},
         .title = phrase("Change Colour")},
        {.name = "ungroup",
         .run = Command::ForGroup{[](auto& store, auto& group) { store.ungroup(group); }},
         .title = phrase("Ungroup")},
        {.name = "closeGroup",
         .run = Command::ForGroup{[](auto& store, auto& group) {
             TabCloser{store}.closeGroup(group);
         }},
         .title = phrase("Close Group")},
    };
}

/// The commands of digits: tabs by their place, and profiles.
Commands numbered() {
    Commands all;
    for (int number = 1; number <= 9; ++number) {
        const std::string digit = std::to_string(number);
        all.push_back({.name = "selectTab" + digit,
                       .run = Command::ForWindow{[number](BrowserView& view) {
                           view.store().selectTab(number);
                       }},
                       .keys = {"⌘" + digit}});
        all.push_back(
            {.name = "profile" + digit,
             .run = Command::ForWindow{[index = static_cast<std::size_t>(number - 1)](auto& view) {
                 const auto& profiles = view.services().profiles().profiles();
                 if (index >= profiles.size()) return;
                 const Profile profile = profiles[index];
                 if (profile.id != view.store().profile().id) view.switchSoon(profile);
             }},
             .keys = {"⌃" + digit}});
    }
    return all;
}

Commands editing() {
    const auto row = [](const char* name, EditingCommand which, Phrase title, const char* key) {
        return Command{.name = name,
                       .run = edit(which),
                       .title = title,
                       .keys = {key},
                       .keysOf = KeysOf::focus};
    };
    return {
        row("undo", EditingCommand::undo, phrase("Undo"), "⌘Z"),
        row("redo", EditingCommand::redo, phrase("Redo"), "⇧⌘Z"),
        row("cut", EditingCommand::cut, phrase("Cut"), "⌘X"),
        row("copy", EditingCommand::copy, phrase("Copy"), "⌘C"),
        row("paste", EditingCommand::paste, phrase("Paste"), "⌘V"),
        row("selectAll", EditingCommand::selectAll, phrase("Select All"), "⌘A"),
    };
}

Commands windows() {
    return {
        {.name = "focusNextArea",
         .run = onView(&BrowserView::focusNextArea),
         .keys = {"F6"},
         .help = "the keyboard goes on among address, column, divider, searches, question, answer, "
                 "page "
                 "and assistant"},
        {.name = "focusPreviousArea",
         .run = onView(&BrowserView::focusPreviousArea),
         .keys = {"⇧F6"},
         .help = "the same, back"},
        {.name = "endEditing", .run = Command::ForWindow{[](auto& view) { view.endEditing(); }}},
        {.name = "newWindow",
         .run = onApplication(&AppDelegate::newWindow),
         .title = phrase("New Window"),
         .keys = {"⌘N"},
         .help = "a new window"},
        {.name = "newPrivateWindow",
         .run = onApplication(&AppDelegate::newPrivateWindow),
         .title = phrase("New Private Window"),
         .keys = {"⇧⌘N"},
         .help = "a new private window"},
        {.name = "performClose",
         .run = onWindow(&BrowserWindow::performClose),
         .title = phrase("Close Window"),
         .keys = {"⇧⌘W"},
         .help = "close the window"},
        {.name = "toggleFullScreen",
         .run = onWindow(&BrowserWindow::toggleFullScreen),
         .title = phrase("Enter Full Screen"),
         .keys = {"⌃⌘F"},
         .help = "full screen, and back"},
        {.name = "performMiniaturize",
         .run = onWindow(&BrowserWindow::performMiniaturize),
         .title = phrase("Minimize"),
         .keys = {"⌘M"},
         .help = "minimise the window"},
        {.name = "performZoom",
         .run = onWindow(&BrowserWindow::performZoom),
         .title = phrase("Zoom")},
    };
}

Commands program() {
    return {
        {.name = "openSettings",
         .run = onApplication(&AppDelegate::openSettings),
         .title = phrase("Settings…"),
         .keys = {"⌘,"},
         .help = "the settings"},
        {.name = "checkForUpdates",
         .run = onApplication(&AppDelegate::checkForUpdates),
         .title = phrase("Check for Updates…")},
        {.name = "showWhatsNew",
         .run = onApplication(&AppDelegate::showWhatsNew),
         .title = phrase("What's New in Orvu")},
        {.name = "restartToUpdate", .run = onApplication(&AppDelegate::restartToUpdate)},
        {.name = "importBookmarks",
         .run = onApplication(&AppDelegate::importBookmarks),
         .title = phrase("Import from Another Browser…")},
        {.name = "makeDefaultBrowser",
         .run = onApplication(&AppDelegate::makeDefaultBrowser),
         .title = phrase("Make Orvu Your Default Browser")},
        {.name = "orderFrontStandardAboutPanel",
         .run = onApplication(&AppDelegate::orderFrontStandardAboutPanel),
         .title = phrase("About Orvu")},
        {.name = "terminate",
         .run = onApplication(&AppDelegate::terminate),
         .title = phrase("Quit Orvu"),
         .keys = {"⌘Q"},
         .help = "quit"},
    };
}

Commands all() {
    Commands result;
    for (auto part : {addressAndTabs(), numbered(), page(), library(), pageAsAWhole(), zooming(),
                      arranging(), editing(), windows(), program()}) {
        std::ranges::move(part, std::back_inserter(result));
    }
    return result;
}

}  // namespace

double PageZoom::stepped(double zoom, int steps) {
    return std::clamp(steppedFreely(zoom, steps), smallest, largest);
}

double PageZoom::steppedFreely(double zoom, int steps) {
    return std::max(std::round((zoom + steps * step) * 10.0) / 10.0, step);
}

std::string_view Command::shownKey() const {
    if (!showsKeyOf.empty()) return command(showsKeyOf).shownKey();
    return keys.empty() ? std::string_view{} : std::string_view{keys.front()};
}

void Command::runIn(BrowserView& view) const {
    if (const auto* const act = std::get_if<ForWindow>(&run)) return (*act)(view);
    const auto* const act = std::get_if<ForTab>(&run);
    if (!act) return;
    const auto tab = view.store().active();
    if (tab) (*act)(view.store(), *tab);
}

const std::vector<Command>& commands() {
    static const std::vector<Command> table = all();
    return table;
}

const Command* findCommand(std::string_view name) {
    const auto found = std::ranges::find(commands(), name, &Command::name);
    return found != commands().end() ? &*found : nullptr;
}

const Command& command(std::string_view name) {
    const Command* const found = findCommand(name);
    assert(found);
    return *found;
}

std::string keyTable() {
    std::string rows;
    const auto row = [&](const std::string& keys, std::string_view help) {
        rows.append("| ").append(keys).append(" | ").append(help).append(" |\n");
    };
    for (const Command& each : commands()) {
        if (each.help.empty()) continue;
        std::string keys;
        for (const auto& key : each.keys) {
            keys.append(keys.empty() ? "" : ", ").append(keyLabel(key));
        }
        row(keys, each.help);
    }
    row(keyLabel("⌘1") + " … " + keyLabel("⌘8") + ", " + keyLabel("⌘9"),
        "the tab at that place, the last one");
    row(keyLabel("⌃1") + " … " + keyLabel("⌃9"), "the profile at that place");
    return rows;
}

}  // namespace orvu
