#pragma once

#include "platform/NetworkMonitor.h"

namespace orvu {

/// A network that comes back when a test says so.
class FakeNetworkMonitor : public NetworkMonitor {
public:
    sigc::connection connectCameBack(const sigc::slot<void()>& slot) override {
        return cameBack.connect(slot);
    }

    sigc::signal<void()> cameBack;
};

}  // namespace orvu
