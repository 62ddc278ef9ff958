#pragma once

#include "foundation/text/Translation.h"
#include "platform/MediaCapture.h"
#include "platform/RefusedPermission.h"
#include "site/permissions/SitePermissions.h"

#include <string>
#include <string_view>
#include <vector>

namespace orvu {

/// How a tab stands with its site.
enum class SiteSecurity {
    none,  ///< an empty tab: there is no site
    secure,
    insecure,
};

/// The badge at the head of the notch.
struct SiteBadge {
    std::string_view symbol;
    std::string_view label;  ///< for people who hover, and for those who don't see it

    [[nodiscard]] static SiteBadge of(SiteSecurity security);

    friend bool operator==(const SiteBadge&, const SiteBadge&) = default;
};

/// The texts and symbols of the panel that tells about a site.
struct SiteInfo {
    std::string_view symbol;
    std::string_view security;

    static constexpr std::string_view trackersSymbol = "shield.lefthalf.filled";
    static constexpr Phrase trackers = phrase("Tracker protection is on");
    static constexpr Phrase trackersDetail =
        phrase("Well-known third-party trackers can't load here.");
    static constexpr Phrase permissions = phrase("PERMISSIONS");
    static constexpr std::string_view refusedSymbol = "hand.raised.fill";
    static constexpr Phrase refused = phrase("Not allowed by Orvu");
    static constexpr Phrase clear = phrase("Clear Cookies and Site Data");
    static constexpr Phrase cleared = phrase("Cleared");

    [[nodiscard]] static SiteInfo of(SiteSecurity security);
    [[nodiscard]] static std::string_view symbolOf(CaptureKind kind);
    /// "Camera", "Ask" and so on.
    [[nodiscard]] static std::string_view title(CaptureKind kind);
    [[nodiscard]] static std::string_view title(SitePermissions::Choice choice);
    [[nodiscard]] static std::string_view title(RefusedPermission permission);
};

/// Those of the records' names that belong to a site: the one ends with the other, so a site's
/// records go along with those of the domains above and below it. None belongs to no site at all.
[[nodiscard]] std::vector<std::string> recordsOfSite(const std::vector<std::string>& names,
                                                     std::string_view site);

}  // namespace orvu
