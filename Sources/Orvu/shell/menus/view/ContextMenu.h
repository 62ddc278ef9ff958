#pragma once

#include "shell/menus/ColumnMenus.h"

#include <giomm/menu.h>
#include <giomm/simpleactiongroup.h>
#include <gtkmm/popovermenu.h>

#include <functional>
#include <vector>

namespace orvu {

/// The one context menu of a part of the window; it shows the lines of whatever asked last.
class ContextMenu : public sigc::trackable {
public:
    /// `parent` must outlive the menu and be in the window when it is shown.
    explicit ContextMenu(Gtk::Widget& parent);
    ~ContextMenu();
    ContextMenu(const ContextMenu&) = delete;
    ContextMenu& operator=(const ContextMenu&) = delete;

    /// Opens the menu at a place in `widget`, which stands in the parent, unless there are no
    /// lines.
    void show(const std::vector<MenuEntry>& entries, Gtk::Widget& widget,
              const Gdk::Rectangle& place);

private:
    [[nodiscard]] Glib::RefPtr<Gio::Menu> model(const std::vector<MenuEntry>& entries);
    [[nodiscard]] Glib::RefPtr<Gio::MenuItem> item(const MenuEntry& entry);
    void choose(const std::function<void()>& run);
    void closed();

    Gtk::Widget& parent_;
    Gtk::PopoverMenu popover_;
    Glib::RefPtr<Gio::SimpleActionGroup> actions_;
    int actionCount_ = 0;
    std::function<void()> chosen_;      ///< acts as soon as the menu is gone
    GtkWidget* focusBefore_ = nullptr;  ///< weak; where the keyboard was when the menu opened
};

}  // namespace orvu
