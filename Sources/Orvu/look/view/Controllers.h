#pragma once

#include <gtkmm/eventcontroller.h>

namespace orvu {

/// Takes a controller from its widget when the event at hand is over; until then it goes on telling.
/// While a controller handles an event the toolkit has the place of the widget's next one in hand,
/// so none of them may go from within a handler, and one that is reset there swallows the event.
void removeAfterEvent(const Glib::RefPtr<Gtk::EventController>& controller);

}  // namespace orvu
