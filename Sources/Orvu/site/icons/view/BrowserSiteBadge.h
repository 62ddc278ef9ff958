#pragma once

#include "site/icons/view/SiteIcon.h"

#include <string>

namespace orvu {

/// The icon of a tab: its own if it has one, else that of its site.
class BrowserSiteBadge : public SiteIcon {
public:
    BrowserSiteBadge(SiteIcons icons, int size) : SiteIcon(icons, size) {}

    /// Shows `icon`, or without one what the store knows of `host`.
    void set(const std::string& host, const ImagePointer& icon) { show(host, icon); }
};

}  // namespace orvu
