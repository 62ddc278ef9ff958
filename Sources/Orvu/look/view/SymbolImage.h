#pragma once
// Stands in until the symbols are bundled.
#include <gtkmm/image.h>
#include <string_view>
namespace orvu {
inline void setSymbol(Gtk::Image& i, std::string_view, int s) {
    i.set_from_icon_name("go-next-symbolic");
    i.set_pixel_size(s);
    i.set_valign(Gtk::Align::CENTER);
}
}  // namespace orvu
