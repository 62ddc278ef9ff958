#include "look/view/SymbolImage.h"

#include "look/Symbols.h"

namespace orvu {

void setSymbol(Gtk::Image& image, std::string_view symbol, int pixelSize) {
    const std::string icon = symbolIcon(symbol);
    if (icon.empty()) {
        image.clear();
    } else {
        image.set_from_icon_name(icon);
    }
    image.set_pixel_size(pixelSize);
    gtk_accessible_update_state(GTK_ACCESSIBLE(image.gobj()), GTK_ACCESSIBLE_STATE_HIDDEN, TRUE,
                                -1);
}

}  // namespace orvu
