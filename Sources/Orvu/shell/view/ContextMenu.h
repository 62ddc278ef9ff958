#pragma once

#include "shell/ColumnMenus.h"

#include <giomm/menu.h>
#include <giomm/simpleactiongroup.h>
#include <gtkmm/popovermenu.h>

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
    void closed();

    Gtk::Widget& parent_;
    Gtk::PopoverMenu popover_;
    Glib::RefPtr<Gio::SimpleActionGroup> actions_;
    int actionCount_ = 0;
    GtkWidget* focusBefore_ = nullptr;  ///< weak; where the keyboard was when the menu opened
};

}  // namespace orvu
