#include "look/view/Keyboard.h"

#include <gdk/gdkkeysyms.h>

namespace orvu {

bool isReturnKey(guint key) {
    return key == GDK_KEY_Return || key == GDK_KEY_KP_Enter || key == GDK_KEY_ISO_Enter;
}

}  // namespace orvu
