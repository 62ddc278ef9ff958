#pragma once

#include "platform/linux/GObjectPointer.h"

#include <gio/gio.h>

#include <cstdint>

namespace orvu {

/// Pages and what the toolkit draws are dark where the desktop's portal says that its person prefers
/// that, and follow when the preference changes. Where there is no portal, the toolkit's own settings
/// decide. The windows' own colours are not the desktop's.
class PortalAppearance {
public:
    /// Asks without waiting for the answer.
    PortalAppearance();
    PortalAppearance(const PortalAppearance&) = delete;
    PortalAppearance& operator=(const PortalAppearance&) = delete;
    ~PortalAppearance();

private:
    enum class Scheme : std::uint32_t { noPreference, dark, light };

    void busCame(GDBusConnection* bus);
    void settingChanged(GVariant* parameters);
    static void apply(GVariant* value);

    GObjectPointer<GCancellable> cancellable_;
    GObjectPointer<GDBusConnection> bus_;
    guint changes_ = 0;
};

}  // namespace orvu
