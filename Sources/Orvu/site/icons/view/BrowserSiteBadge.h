#pragma once

#include "site/icons/view/SiteIcon.h"

#include <string>

namespace orvu {

/// The icon of a tab: its own if it has one, else that of its site.
class BrowserSiteBadge : public SiteIcon {
public:
    /// `store` must outlive the view.
    BrowserSiteBadge(FaviconStore& store, Trace trace, int size) : SiteIcon(store, trace, size) {}

    /// Shows `icon`, or without one what the store knows of `host`.
    void set(const std::string& host, const ImagePointer& icon) { show(host, icon); }
};

}  // namespace orvu
