#include "platform/linux/desktop/X11Placement.h"

#include <gdk/x11/gdkx.h>

namespace orvu {
namespace {

/// What the display server knows a window by.
struct ServerWindow {
    Display* display;
    Window window;
    int scale;
};

std::optional<ServerWindow> serverWindow(GtkWindow* window) {
    GdkSurface* const surface = gtk_native_get_surface(GTK_NATIVE(window));
    if (!surface || !GDK_IS_X11_SURFACE(surface)) return std::nullopt;
    return ServerWindow{gdk_x11_display_get_xdisplay(gdk_surface_get_display(surface)),
                        gdk_x11_surface_get_xid(surface), gdk_surface_get_scale_factor(surface)};
}

}  // namespace

std::optional<Point> windowTopLeft(GtkWindow* window) {
    const auto server = serverWindow(window);
    if (!server) return std::nullopt;
    int x = 0;
    int y = 0;
    Window child = 0;
    XTranslateCoordinates(server->display, server->window, DefaultRootWindow(server->display), 0, 0,
                          &x, &y, &child);
    return Point{x / server->scale, y / server->scale};
}

void moveWindow(GtkWindow* window, Point topLeft) {
    const auto server = serverWindow(window);
    if (!server) return;
    XMoveWindow(server->display, server->window, topLeft.x * server->scale,
                topLeft.y * server->scale);
    XFlush(server->display);
}

}  // namespace orvu
