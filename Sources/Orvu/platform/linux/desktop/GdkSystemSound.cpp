#include "platform/linux/desktop/GdkSystemSound.h"

#include <gdk/gdk.h>

namespace orvu {

void GdkSystemSound::beep() { gdk_display_beep(gdk_display_get_default()); }

}  // namespace orvu
