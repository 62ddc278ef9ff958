#pragma once

#include "site/Favicons.h"

#include <string_view>

namespace orvu {

/// What a window's views draw the icons of sites with: the icon store, asked as the window may.
/// A value, to be copied; the store must outlive it.
class SiteIcons {
public:
    SiteIcons(FaviconStore& store, Persistence persistence)
        : store_(&store), persistence_(persistence) {}

    /// The site's icon if it is at hand. Otherwise the store begins to look for it.
    [[nodiscard]] ImagePointer icon(std::string_view host) const {
        return store_->icon(host, persistence_);
    }
    /// Calls `slot` after the icon of this site changed.
    [[nodiscard]] sigc::connection connectIcon(std::string_view host,
                                               const sigc::slot<void()>& slot) const {
        return store_->connectIcon(host, slot);
    }

private:
    FaviconStore* store_;
    Persistence persistence_;
};

}  // namespace orvu
