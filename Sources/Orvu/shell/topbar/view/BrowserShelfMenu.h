#pragma once

#include "core/BrowserStore.h"
#include "foundation/text/Translation.h"
#include "look/view/FrameRefresh.h"
#include "shell/menus/ColumnMenus.h"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/image.h>
#include <gtkmm/label.h>
#include <gtkmm/popover.h>
#include <gtkmm/scrolledwindow.h>

#include <memory>

namespace orvu {

/// The button of the top bar that opens the menu of parked tabs.
class BrowserShelfMenu : public Gtk::Button {
public:
    explicit BrowserShelfMenu(std::shared_ptr<BrowserStore> store);
    ~BrowserShelfMenu() override;

private:
    void open();
    void closed();
    void fill();
    void append(const MenuEntry& entry);
    void refresh();

    const std::shared_ptr<BrowserStore> store_;
    Gtk::Box line_;
    Gtk::Image arrow_;
    Gtk::Label word_{phrase("Shelf").c_str()};
    Gtk::Label count_;
    Gtk::Popover menu_;
    Gtk::ScrolledWindow scroll_;
    Gtk::Box lines_{Gtk::Orientation::VERTICAL};
    FrameRefresh refresh_;
};

}  // namespace orvu
