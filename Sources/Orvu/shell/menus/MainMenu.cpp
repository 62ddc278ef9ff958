#include "shell/menus/MainMenu.h"

namespace orvu {
namespace {

constexpr MenuItem separator{};

}  // namespace

std::vector<Menu> makeMenu() {
    // This desktop has no way to hide a program's windows without closing or minimising them.
    return {
        {"Orvu",
         {{"About Orvu", "app.orderFrontStandardAboutPanel", ""},
          separator,
          {"Make Orvu Your Default Browser", "app.makeDefaultBrowser", ""},
          separator,
          {"Quit Orvu", "app.terminate", "⌘Q"}}},
        {"File",
         {{"New Window", "app.newWindow", "⌘N"},
          {"New Private Window", "app.newPrivateWindow", "⇧⌘N"},
          separator,
          {"Close Window", "win.performClose", "⇧⌘W"}}},
        {"Edit",
         {{"Undo", "win.undo", "⌘Z"},
          {"Redo", "win.redo", "⇧⌘Z"},
          separator,
          {"Cut", "win.cut", "⌘X"},
          {"Copy", "win.copy", "⌘C"},
          {"Paste", "win.paste", "⌘V"},
          {"Select All", "win.selectAll", "⌘A"}}},
        {"View", {{"Enter Full Screen", "win.toggleFullScreen", "⌃⌘F"}}},
        {"Window", {{"Minimize", "win.performMiniaturize", "⌘M"}, {"Zoom", "win.performZoom", ""}}},
    };
}

}  // namespace orvu
