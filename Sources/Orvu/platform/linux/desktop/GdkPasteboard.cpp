#include "platform/linux/desktop/GdkPasteboard.h"

#include <gdk/gdk.h>

namespace orvu {

void GdkPasteboard::setString(const std::string& text) {
    gdk_clipboard_set_text(gdk_display_get_clipboard(gdk_display_get_default()), text.c_str());
}

}  // namespace orvu
