#include "look/view/SymbolImage.h"

#include "look/Symbols.h"

namespace orvu {

void setSymbol(Gtk::Image& image, std::string_view symbol, int pixelSize) {
    image.set_from_icon_name(symbolIcon(symbol));
    image.set_pixel_size(pixelSize);
    gtk_accessible_update_state(GTK_ACCESSIBLE(image.gobj()), GTK_ACCESSIBLE_STATE_HIDDEN,
                                static_cast<gboolean>(true), -1);
}

}  // namespace orvu
