#pragma once

#include <gtkmm/image.h>

#include <string_view>

namespace orvu {

/// Draws a symbol. It is decoration: assistive technology doesn't see it.
void setSymbol(Gtk::Image& image, std::string_view symbol, int pixelSize);

}  // namespace orvu
