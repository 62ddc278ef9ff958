#include "platform/linux/desktop/GioNetworkMonitor.h"

namespace orvu {

GioNetworkMonitor::GioNetworkMonitor(MainLoop& loop) : loop_(loop) {
    changes_ = Gio::NetworkMonitor::get_default()->signal_network_changed().connect(
        sigc::mem_fun(*this, &GioNetworkMonitor::changed));
}

void GioNetworkMonitor::changed(bool isAvailable) {
    if (!isAvailable) return settling_.cancel();
    settling_ = loop_.after(settlingTime, [this] { cameBack_.emit(); });
}

}  // namespace orvu
