#include "site/SiteInfo.h"

#include <algorithm>
#include <iterator>

namespace orvu {
namespace {

constexpr std::string_view lock = "lock.fill";
constexpr std::string_view warning = "exclamationmark.triangle.fill";

/// `name`, which begins with a small letter of ASCII, with a capital.
std::string capitalized(std::string_view name) {
    std::string result{name};
    result.front() = static_cast<char>(result.front() - 'a' + 'A');
    return result;
}

}  // namespace

SiteBadge SiteBadge::of(SiteSecurity security) {
    switch (security) {
        case SiteSecurity::none:
            return {"magnifyingglass", "Search"};
        case SiteSecurity::secure:
            return {lock, "Site info"};
        case SiteSecurity::insecure:
            break;
    }
    return {warning, "Site info"};
}

SiteInfo SiteInfo::of(SiteSecurity security) {
    if (security == SiteSecurity::secure) return {lock, "Connection is secure"};
    return {warning, "Connection isn't secure"};
}

std::string_view SiteInfo::symbolOf(CaptureKind kind) {
    return kind == CaptureKind::camera ? "video" : "mic";
}

std::string SiteInfo::title(CaptureKind kind) { return capitalized(SitePermissions::name(kind)); }

std::string SiteInfo::title(SitePermissions::Choice choice) {
    return capitalized(SitePermissions::name(choice));
}

std::string_view SiteInfo::title(RefusedPermission permission) {
    switch (permission) {
        case RefusedPermission::location:
            return "Location";
        case RefusedPermission::notifications:
            return "Notifications";
        case RefusedPermission::pointerLock:
            return "Holding the pointer";
        case RefusedPermission::deviceNames:
            return "Names of devices";
        case RefusedPermission::clipboard:
            return "Reading the clipboard";
        case RefusedPermission::screen:
            return "Screen";
        case RefusedPermission::protectedMedia:
            return "Protected media";
        case RefusedPermission::otherSitesData:
            break;
    }
    return "Data of other sites";
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
