#include "shell/menus/MainMenu.h"

#include "foundation/text/Translation.h"

#include <initializer_list>

namespace orvu {
namespace {

/// Commands by name; an empty name is a separator.
std::vector<MenuItem> lines(std::initializer_list<std::string_view> names) {
    std::vector<MenuItem> items;
    for (const auto name : names) {
        items.push_back(name.empty() ? MenuItem{} : MenuItem{command(name)});
    }
    return items;
}

}  // namespace

MenuItem::MenuItem(const Command& command)
    : title(command.title), action(command.action()), keys(command.shownKey()) {}

MenuItem::MenuItem(const Command& command, const CommandSubject& subject)
    : title(command.titleFor(subject)), action(command.action()), keys(command.shownKey()) {}

std::vector<Menu> makeMenu() {
    // This desktop has no way to hide a program's windows without closing or minimising them.
    return {
        {"Orvu", lines({"orderFrontStandardAboutPanel", "showWhatsNew", "checkForUpdates", "",
                        "openSettings", "makeDefaultBrowser", "", "terminate"})},
        {phrase("File"),
         lines({"newWindow", "newPrivateWindow", "", "importBookmarks", "", "performClose"})},
        {phrase("Edit"), lines({"undo", "redo", "", "cut", "copy", "paste", "selectAll"})},
        {phrase("View"), lines({"toggleFullScreen"})},
        {phrase("Window"), lines({"performMiniaturize", "performZoom"})},
    };
}

}  // namespace orvu
