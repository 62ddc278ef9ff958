#pragma once

namespace orvu {

/// Without a graphics processor, lets the toolkit draw by itself: that is several times faster
/// than an emulated one and saves some 100 MB. Call before the toolkit starts; what the user set
/// in the environment stays.
void chooseRenderer();

}  // namespace orvu
