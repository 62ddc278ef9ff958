#pragma once

#include "look/view/MaximumWidth.h"
#include "shell/view/AddressField.h"
#include "shell/view/BrowserMenuButton.h"
#include "shell/view/BrowserNavButtons.h"
#include "shell/view/BrowserShelfMenu.h"
#include "shell/view/WindowControls.h"

#include <gtkmm/box.h>
#include <gtkmm/image.h>
#include <gtkmm/label.h>

#include <memory>

namespace orvu {

/// The bar at the top of a window: the window's controls, the ways through pages, the address,
/// and the menus.
class BrowserTopBar : public Gtk::Box {
public:
    explicit BrowserTopBar(const std::shared_ptr<BrowserStore>& store);

    [[nodiscard]] AddressField& address() { return address_; }

private:
    static constexpr int addressWidth = 560;

    void addPrivateMark();

    WindowControls controls_;
    BrowserNavButtons navigation_;
    AddressField address_;
    MaximumWidth addressPlace_{address_, addressWidth};
    Gtk::Box privateMark_;
    Gtk::Image eyeglasses_;
    Gtk::Label private_{"Private"};
    BrowserShelfMenu shelf_;
    BrowserMenuButton menu_;
};

}  // namespace orvu
