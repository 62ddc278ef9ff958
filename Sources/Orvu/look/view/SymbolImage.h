#pragma once

#include <gtkmm/image.h>

#include <string_view>

namespace orvu {

/// Shows a symbol `pixelSize` pixels high, in the style's text colour; nothing if the program
/// doesn't have it. Assistive technology passes over the image: what it stands for must be said
/// by the label of the control that holds it. The drawings lie where the toolkit's application looks
/// for a program's own icons.
void setSymbol(Gtk::Image& image, std::string_view symbol, int pixelSize);

}  // namespace orvu
