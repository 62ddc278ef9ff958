#pragma once

#include "foundation/Geometry.h"

#include <gtk/gtk.h>

#include <optional>

namespace orvu {

/// Where a window stands, on a desktop that lets programs see and choose it: X11, not Wayland.
/// Nothing before the window was shown.
[[nodiscard]] std::optional<Point> windowTopLeft(GtkWindow* window);
/// Moves a shown window; no effect elsewhere. A window manager may decide otherwise.
void moveWindow(GtkWindow* window, Point topLeft);

}  // namespace orvu
