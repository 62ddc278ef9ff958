#pragma once

#include <gtkmm/snapshot.h>
#include <gtkmm/widget.h>

#include <functional>

namespace orvu {

/// Draws what comes in from the top: a little smaller at first, and out of a blur. `progress` is
/// from 0, nothing yet, to 1, all there, and may swing beyond.
void drawEntrance(const Glib::RefPtr<Gtk::Snapshot>& snapshot, double progress, double width,
                  const std::function<void()>& draw);

}  // namespace orvu
