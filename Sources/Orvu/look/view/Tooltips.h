#pragma once

#include <gtkmm/popover.h>
#include <gtkmm/widget.h>

namespace orvu {

/// Keeps the tooltip of `opener` away as long as `popover`, which it opens, is open: it would lie
/// over it, and come even where the pointer is in the popover.
void hideTooltipWhileOpen(Gtk::Widget& opener, Gtk::Popover& popover);

}  // namespace orvu
