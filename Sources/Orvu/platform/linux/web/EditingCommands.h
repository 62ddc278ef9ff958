#pragma once

#include "platform/EditingCommand.h"

#include <gtkmm/window.h>

namespace orvu {

/// Edits where the keyboard is: in a page or in a text field.
void editInFocus(Gtk::Window& window, EditingCommand command);

}  // namespace orvu
