#pragma once

#include "platform/MainLoop.h"
#include "platform/NetworkMonitor.h"

#include <gio/gio.h>

#include <chrono>

namespace orvu {

/// The desktop's network, as its network service or else the kernel tells of it.
class GioNetworkMonitor : public NetworkMonitor {
public:
    /// A connection comes up in several steps, each of which is told: for so long nothing more must
    /// come.
    static constexpr std::chrono::milliseconds settlingTime{500};

    /// `loop` must outlive the monitor.
    explicit GioNetworkMonitor(MainLoop& loop);
    GioNetworkMonitor(const GioNetworkMonitor&) = delete;
    GioNetworkMonitor& operator=(const GioNetworkMonitor&) = delete;
    ~GioNetworkMonitor() override;

    [[nodiscard]] bool isAvailable() const override {
        return g_network_monitor_get_network_available(g_network_monitor_get_default()) != FALSE;
    }
    sigc::connection connectCameBack(const sigc::slot<void()>& slot) override {
        return cameBack_.connect(slot);
    }

private:
    void changed(bool isAvailable);

    MainLoop& loop_;
    sigc::signal<void()> cameBack_;
    Scheduled settling_;
    gulong changes_ = 0;
};

}  // namespace orvu
