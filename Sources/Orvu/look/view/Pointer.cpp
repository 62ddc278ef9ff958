#include "look/view/Pointer.h"

namespace orvu {

bool isPointerOver(const Gtk::Widget& widget) {
    auto* const self = const_cast<GtkWidget*>(widget.gobj());
    GtkNative* const native = gtk_widget_get_native(self);
    GdkSurface* const surface = native ? gtk_native_get_surface(native) : nullptr;
    GdkSeat* const seat = gdk_display_get_default_seat(gtk_widget_get_display(self));
    GdkDevice* const pointer = seat ? gdk_seat_get_pointer(seat) : nullptr;
    if (!surface || !pointer) return false;
    double x = 0;
    double y = 0;
    if (!gdk_surface_get_device_position(surface, pointer, &x, &y, nullptr)) return false;
    // The surface is larger than the window by its shadow.
    double left = 0;
    double top = 0;
    gtk_native_get_surface_transform(native, &left, &top);
    double ownX = 0;
    double ownY = 0;
    return gtk_widget_translate_coordinates(GTK_WIDGET(native), self, x - left, y - top, &ownX,
                                            &ownY) &&
           gtk_widget_contains(self, ownX, ownY);
}

}  // namespace orvu
