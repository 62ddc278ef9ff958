#pragma once

#include <string>

namespace orvu {

/// Tries what a confined process must not be able to do, and says of each in a line of its own
/// whether it was "refused" or "possible". Changes nothing outside the process that it could not
/// undo.
[[nodiscard]] std::string probeConfinement();

}  // namespace orvu
