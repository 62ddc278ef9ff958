#pragma once

namespace orvu {

/// What can be done to the text that has the keyboard, in a page or in a field.
enum class EditingCommand { undo, redo, cut, copy, paste, selectAll };

}  // namespace orvu
