#include "look/controls/view/BrowserChromeButton.h"

#include "look/view/Accessible.h"
#include "look/view/SymbolImage.h"

namespace orvu {

BrowserChromeButton::BrowserChromeButton(std::string_view symbol, std::string_view help) {
    add_css_class("chrome-button");
    set_valign(Gtk::Align::CENTER);
    set_child(image_);
    setSymbol(symbol);
    setHelp(help);
}

void BrowserChromeButton::setSymbol(std::string_view symbol) {
    orvu::setSymbol(image_, symbol, symbolSize);
}

void BrowserChromeButton::setHelp(std::string_view help) {
    const std::string text{help};
    set_tooltip_text(text);
    setAccessibleLabel(*this, text);
}

}  // namespace orvu
