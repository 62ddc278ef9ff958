#include "platform/linux/desktop/GioNetworkMonitor.h"

namespace orvu {

// The wrapper in C++ gives up a reference to the one monitor that it never took.
GioNetworkMonitor::GioNetworkMonitor(MainLoop& loop) : loop_(loop) {
    const auto changed = +[](GNetworkMonitor*, gboolean isAvailable, gpointer self) {
        static_cast<GioNetworkMonitor*>(self)->changed(isAvailable != FALSE);
    };
    changes_ = g_signal_connect(g_network_monitor_get_default(), "network-changed",
                                G_CALLBACK(changed), this);
}

GioNetworkMonitor::~GioNetworkMonitor() {
    g_signal_handler_disconnect(g_network_monitor_get_default(), changes_);
}

void GioNetworkMonitor::changed(bool isAvailable) {
    if (!isAvailable) return settling_.cancel();
    settling_ = loop_.after(settlingTime, [this] { cameBack_.emit(); });
}

}  // namespace orvu
