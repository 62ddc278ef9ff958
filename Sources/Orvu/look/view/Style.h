#pragma once

namespace orvu {

/// Loads the looks of all windows with the class "orvu". Once, when a display is there.
void installStyle();

}  // namespace orvu
