#include "shell/view/BrowserTopBar.h"

#include "look/view/SymbolImage.h"

namespace orvu {

BrowserTopBar::BrowserTopBar(const std::shared_ptr<BrowserStore>& store)
    : navigation_(store), address_(store), shelf_(store), menu_(store) {
    add_css_class("top-bar");
    append(controls_);
    append(navigation_);
    addressPlace_.set_hexpand(true);
    append(addressPlace_);
    if (store->isPrivate()) addPrivateMark();
    append(shelf_);
    append(menu_);
}

void BrowserTopBar::addPrivateMark() {
    privateMark_.add_css_class("private-mark");
    privateMark_.set_valign(Gtk::Align::CENTER);
    setSymbol(eyeglasses_, "eyeglasses", 14);
    privateMark_.append(eyeglasses_);
    privateMark_.append(private_);
    append(privateMark_);
}

}  // namespace orvu
