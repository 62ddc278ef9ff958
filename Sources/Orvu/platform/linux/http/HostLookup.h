#pragma once

#include "foundation/async/Future.h"

#include <string>

namespace orvu {

/// Whether a request for an address goes through a proxy. Dropping the future ends the lookup.
[[nodiscard]] Future<bool> isBehindProxy(const std::string& address);
/// Whether a host has an address that is not of the world. False if it can't be found.
[[nodiscard]] Future<bool> hasLocalAddress(const std::string& host);

}  // namespace orvu
