#include "import/view/BrowserMark.h"

#include "foundation/text/Text.h"
#include "import/KnownBrowsers.h"
#include "look/view/Accessible.h"

#include <giomm/desktopappinfo.h>
#include <giomm/fileicon.h>
#include <gtkmm/icontheme.h>
#include <gtkmm/image.h>
#include <gtkmm/label.h>

#include <algorithm>

namespace orvu {
namespace {

bool isThere(const Glib::RefPtr<Gio::Icon>& icon, Gtk::Widget& widget) {
    if (!icon) return false;
    if (const auto file = std::dynamic_pointer_cast<Gio::FileIcon>(icon)) {
        return file->get_file()->query_exists();
    }
    return Gtk::IconTheme::get_for_display(widget.get_display())->has_gicon(icon);
}

/// The icon that the first of a browser's entries in the menu names; null if it is not installed.
Glib::RefPtr<Gio::Icon> iconOf(const std::string& id, Gtk::Widget& widget) {
    const auto all = KnownBrowser::all();
    const auto browser = std::ranges::find(all, id, &KnownBrowser::id);
    if (browser == all.end()) return {};
    for (const std::string& name : browser->desktopFiles()) {
        const auto entry = Gio::DesktopAppInfo::create(name);
        if (entry && isThere(entry->get_icon(), widget)) return entry->get_icon();
    }
    return {};
}

}  // namespace

BrowserMark::BrowserMark(const std::string& id, const std::string& name) {
    set_size_request(iconSize, iconSize);
    set_hexpand(false);  // whatever its tile does
    hideFromAccessibility(*this);
    if (const auto icon = iconOf(id, *this)) {
        auto& image = *Gtk::make_managed<Gtk::Image>();
        image.set(icon);
        image.set_pixel_size(iconSize);
        append(image);
        return;
    }
    auto& tile = *Gtk::make_managed<Gtk::Label>(std::string{firstCharacters(name, 1)});
    tile.add_css_class("browser-mark");
    tile.set_size_request(tileSize, tileSize);
    tile.set_hexpand(true);
    tile.set_halign(Gtk::Align::CENTER);
    tile.set_valign(Gtk::Align::CENTER);
    append(tile);
}

}  // namespace orvu
