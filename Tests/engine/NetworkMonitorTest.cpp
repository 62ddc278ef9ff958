#include "platform/linux/desktop/GioNetworkMonitor.h"

#include "fakes/VirtualMainLoop.h"

#include <gtest/gtest.h>

namespace orvu {
namespace {

class NetworkMonitorTest : public testing::Test {
protected:
    static void change(bool isAvailable) {
        g_signal_emit_by_name(g_network_monitor_get_default(), "network-changed",
                              static_cast<gboolean>(isAvailable));
    }

    VirtualMainLoop loop;
    int returns = 0;
};

TEST_F(NetworkMonitorTest, TheDesktopsOneMonitorIsNotUsedUp) {
    auto* const desktops = G_OBJECT(g_network_monitor_get_default());
    const auto references = desktops->ref_count;
    for (int i = 0; i < 3; ++i) {
        const GioNetworkMonitor monitor{loop};
        static_cast<void>(monitor.isAvailable());
    }

    EXPECT_EQ(desktops->ref_count, references);
}

TEST_F(NetworkMonitorTest, TheNetworkIsBackOnceNothingMoreIsTold) {
    GioNetworkMonitor monitor{loop};
    monitor.connectCameBack([this] { ++returns; });

    change(true);
    loop.advance(GioNetworkMonitor::settlingTime / 2);
    change(true);
    loop.advance(GioNetworkMonitor::settlingTime / 2);
    EXPECT_EQ(returns, 0);
    loop.advance(GioNetworkMonitor::settlingTime / 2);

    EXPECT_EQ(returns, 1);
}

TEST_F(NetworkMonitorTest, ANetworkThatGoesAgainWasNotBack) {
    GioNetworkMonitor monitor{loop};
    monitor.connectCameBack([this] { ++returns; });

    change(true);
    change(false);
    loop.advance(GioNetworkMonitor::settlingTime * 2);

    EXPECT_EQ(returns, 0);
}

TEST_F(NetworkMonitorTest, NothingIsToldOnceItIsGone) {
    {
        GioNetworkMonitor monitor{loop};
        monitor.connectCameBack([this] { ++returns; });
    }

    change(true);
    loop.advance(GioNetworkMonitor::settlingTime * 2);

    EXPECT_EQ(returns, 0);
}

}  // namespace
}  // namespace orvu
