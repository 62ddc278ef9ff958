#pragma once

#include "core/BrowserStore.h"
#include "shell/menus/MainMenu.h"

#include <giomm/menu.h>
#include <gtkmm/image.h>
#include <gtkmm/menubutton.h>
#include <gtkmm/popovermenu.h>

#include <memory>

namespace orvu {

/// The button at the end of the top bar that opens the "More" menu, with the program's main menu
/// as its last section.
class BrowserMenuButton : public Gtk::MenuButton {
public:
    explicit BrowserMenuButton(std::shared_ptr<BrowserStore> store);
    BrowserMenuButton(const BrowserMenuButton&) = delete;
    BrowserMenuButton& operator=(const BrowserMenuButton&) = delete;
    ~BrowserMenuButton() override;

private:
    static void opens(GtkMenuButton*, gpointer self);
    void fill();
    void closed();

    const std::shared_ptr<BrowserStore> store_;
    const Glib::RefPtr<Gio::Menu> menu_ = Gio::Menu::create();
    Gtk::PopoverMenu popover_{menu_, Gtk::PopoverMenu::Flags::NESTED};
    Gtk::Image ellipsis_;
    GtkWidget* focusBefore_ = nullptr;  ///< what the menu's lines about text are about
};

}  // namespace orvu
