#pragma once

#include <gtkmm/button.h>
#include <gtkmm/image.h>

#include <string_view>

namespace orvu {

/// A button of the top bar: a symbol, with a help text that is its name as well.
class BrowserChromeButton : public Gtk::Button {
public:
    static constexpr int side = 32;
    static constexpr int symbolSize = 14;

    BrowserChromeButton(std::string_view symbol, std::string_view help);

    void setSymbol(std::string_view symbol);
    /// `help` has key signs as they stand in the program's texts.
    void setHelp(std::string_view help);

private:
    Gtk::Image image_;
};

}  // namespace orvu
