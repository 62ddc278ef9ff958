#pragma once

#include "platform/EditingCommand.h"

#include <gtkmm/window.h>

namespace orvu {

/// Edits where the keyboard is: in a page or in a text field. False if it is elsewhere.
bool editInFocus(Gtk::Window& window, EditingCommand command);

}  // namespace orvu
