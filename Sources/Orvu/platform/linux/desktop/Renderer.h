#pragma once

namespace orvu {

/// Without a graphics processor, lets the toolkit and the engine draw by themselves: that is several
/// times faster than an emulated one and saves some 100 MB, and 4 MB for each page. Call before the toolkit starts; what the user set
/// in the environment stays.
void chooseRenderer();

}  // namespace orvu
