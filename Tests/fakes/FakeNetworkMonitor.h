#pragma once

#include "platform/NetworkMonitor.h"

namespace orvu {

/// A network that comes back when a test says so.
class FakeNetworkMonitor : public NetworkMonitor {
public:
    [[nodiscard]] bool isAvailable() const override { return available; }
    sigc::connection connectCameBack(const sigc::slot<void()>& slot) override {
        return cameBack.connect(slot);
    }

    bool available = true;
    sigc::signal<void()> cameBack;
};

}  // namespace orvu
