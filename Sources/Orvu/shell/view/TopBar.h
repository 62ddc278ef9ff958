#pragma once

#include "look/view/MaximumWidth.h"
#include "shell/view/AddressField.h"
#include "shell/view/BrowserMenuButton.h"
#include "shell/view/NavButtons.h"
#include "shell/view/ShelfMenu.h"
#include "shell/view/WindowControls.h"

#include <gtkmm/box.h>
#include <gtkmm/image.h>
#include <gtkmm/label.h>

#include <memory>

namespace orvu {

/// The bar at the top of a window: the window's controls, the ways through pages, the address,
/// and the menus.
class TopBar : public Gtk::Box {
public:
    explicit TopBar(const std::shared_ptr<BrowserStore>& store);

    [[nodiscard]] AddressField& address() { return address_; }

private:
    static constexpr int addressWidth = 560;

    void addPrivateMark();

    WindowControls controls_;
    NavButtons navigation_;
    AddressField address_;
    MaximumWidth addressPlace_{address_, addressWidth};
    Gtk::Box privateMark_;
    Gtk::Image eyeglasses_;
    Gtk::Label private_{"Private"};
    ShelfMenuButton shelf_;
    BrowserMenuButton menu_;
};

}  // namespace orvu
