#include "site/SiteInfo.h"

#include "foundation/text/Translation.h"

#include <algorithm>
#include <iterator>

namespace orvu {
namespace {

constexpr std::string_view lock = "lock.fill";
constexpr std::string_view warning = "exclamationmark.triangle.fill";

}  // namespace

SiteBadge SiteBadge::of(SiteSecurity security) {
    switch (security) {
        case SiteSecurity::none:
            return {"magnifyingglass", phrase("Search")};
        case SiteSecurity::secure:
            return {lock, phrase("Site info")};
        case SiteSecurity::insecure:
            break;
    }
    return {warning, phrase("Site info")};
}

SiteInfo SiteInfo::of(SiteSecurity security) {
    if (security == SiteSecurity::secure) return {lock, phrase("Connection is secure")};
    return {warning, phrase("Connection isn't secure")};
}

std::string_view SiteInfo::symbolOf(CaptureKind kind) {
    return kind == CaptureKind::camera ? "video" : "mic";
}

std::string_view SiteInfo::title(CaptureKind kind) {
    return kind == CaptureKind::camera ? phrase("Camera") : phrase("Microphone");
}

std::string_view SiteInfo::title(SitePermissions::Choice choice) {
    switch (choice) {
        case SitePermissions::Choice::ask:
            return phrase("Ask");
        case SitePermissions::Choice::allow:
            return phrase("Allow");
        case SitePermissions::Choice::block:
            break;
    }
    return phrase("Block");
}

std::string_view SiteInfo::title(RefusedPermission permission) {
    switch (permission) {
        case RefusedPermission::location:
            return phrase("Location");
        case RefusedPermission::notifications:
            return phrase("Notifications");
        case RefusedPermission::pointerLock:
            return phrase("Holding the pointer");
        case RefusedPermission::deviceNames:
            return phrase("Names of devices");
        case RefusedPermission::clipboard:
            return phrase("Reading the clipboard");
        case RefusedPermission::screen:
            return phrase("Screen");
        case RefusedPermission::protectedMedia:
            return phrase("Protected media");
        case RefusedPermission::otherSitesData:
            break;
    }
    return phrase("Data of other sites");
}

std::vector<std::string> recordsOfSite(const std::vector<std::string>& names,
                                       std::string_view site) {
    std::vector<std::string> result;
    if (site.empty()) return result;  // every name ends with it
    std::ranges::copy_if(names, std::back_inserter(result), [site](const std::string& name) {
        return name.ends_with(site) || site.ends_with(name);
    });
    return result;
}

}  // namespace orvu
