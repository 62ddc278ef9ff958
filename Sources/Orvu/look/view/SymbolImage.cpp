#include "look/view/SymbolImage.h"

#include "look/Symbols.h"
#include "look/view/Accessible.h"

namespace orvu {

void setSymbol(Gtk::Image& image, std::string_view symbol, int pixelSize) {
    const std::string icon = symbolIcon(symbol);
    if (icon.empty()) {
        image.clear();
    } else {
        image.set_from_icon_name(icon);
    }
    image.set_pixel_size(pixelSize);
    hideFromAccessibility(image);
}

}  // namespace orvu
