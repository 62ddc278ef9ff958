#pragma once

#include "platform/RefusedPermission.h"

#include <array>
#include <set>
#include <vector>

namespace orvu {

/// What the document of one page asked for and was refused, each thing once, however often it asks.
class RefusedPermissions {
public:
    static constexpr std::array all{
        RefusedPermission::location,       RefusedPermission::notifications,
        RefusedPermission::pointerLock,    RefusedPermission::deviceNames,
        RefusedPermission::clipboard,      RefusedPermission::screen,
        RefusedPermission::protectedMedia, RefusedPermission::otherSitesData};

    [[nodiscard]] bool contains(RefusedPermission permission) const {
        return refused_.contains(permission);
    }

    /// True if it was not refused before.
    bool add(RefusedPermission permission) { return refused_.insert(permission).second; }
    /// Forgets everything. True if there was something.
    bool documentUnloaded() {
        const bool had = !refused_.empty();
        refused_.clear();
        return had;
    }

private:
    std::set<RefusedPermission> refused_;
};

}  // namespace orvu
