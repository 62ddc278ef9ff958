#pragma once

#include "foundation/Signal.h"

namespace orvu {

/// Tells when the computer is connected again.
class NetworkMonitor {
public:
    virtual ~NetworkMonitor() = default;

    /// Whether the computer is connected to anything, as far as the desktop knows.
    [[nodiscard]] virtual bool isAvailable() const = 0;
    /// Calls `slot` once after each change of the network that leaves one there.
    virtual sigc::connection connectCameBack(const sigc::slot<void()>& slot) = 0;
};

}  // namespace orvu
