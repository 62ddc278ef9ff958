#include "platform/linux/GdkSystemSound.h"

#include <gdk/gdk.h>

namespace orvu {

void GdkSystemSound::beep() { gdk_display_beep(gdk_display_get_default()); }

}  // namespace orvu
