#include "shell/siteinfo/SitePanel.h"

#include <utility>

namespace orvu {

SitePanel::SitePanel(SitePermissions& permissions, Persistence persistence)
    : permissions_(permissions),
      persistence_(persistence),
      permissionsChanged_(permissions.connectChanged([this] { changed_.emit(); })) {}

bool SitePanel::setTab(const std::shared_ptr<BrowserTab>& tab) {
    // A previous tab that is gone is another one than nothing.
    const std::weak_ptr<BrowserTab> wanted{tab};
    if (!tab_.owner_before(wanted) && !wanted.owner_before(tab_)) return false;
    tab_ = wanted;
    cleared_.reset();
    return true;
}

SiteSecurity SitePanel::security() const {
    const auto tab = tab_.lock();
    if (!tab || tab->isNewTab()) return SiteSecurity::none;
    return tab->isSecure() ? SiteSecurity::secure : SiteSecurity::insecure;
}

std::string SitePanel::site() const {
    const auto tab = tab_.lock();
    return tab && tab->url() ? siteName(*tab->url()) : "";
}

SitePermissions::Choice SitePanel::choice(CaptureKind kind) const {
    return permissions_.choice(kind, site(), persistence_);
}

void SitePanel::choose(SitePermissions::Choice choice, CaptureKind kind) {
    const auto tab = tab_.lock();
    if (!tab) return;
    permissions_.set(choice, kind, site(), persistence_);
    // Tabs of the site stop by themselves, but not one whose address has the "www." that the
    // site's name here has lost.
    if (choice == SitePermissions::Choice::block) tab->webView().stopCapture(kind);
}

bool SitePanel::isRefused(RefusedPermission permission) const {
    const auto tab = tab_.lock();
    return tab && tab->refusedPermissions().contains(permission);
}

void SitePanel::clearSiteData() {
    const auto tab = tab_.lock();
    if (!tab || !canClear()) return;
    tasks_.start(clear(tab->webView().websiteData(), site(), tab));
}

Task<void> SitePanel::clear(std::shared_ptr<WebsiteData> data, std::string site,
                            std::weak_ptr<BrowserTab> tab) {
    auto reading = data->records();
    const auto names = recordsOfSite(co_await reading, site);
    if (!names.empty()) {
        auto removing = data->remove(names);
        static_cast<void>(co_await removing);
    }
    finishClearing(site, tab);
}

void SitePanel::finishClearing(const std::string& site, const std::weak_ptr<BrowserTab>& tab) {
    const auto cleared = tab.lock();
    if (!cleared) return;
    if (cleared == tab_.lock()) cleared_ = site;
    if (cleared->url() && siteName(*cleared->url()) == site) cleared->webView().reload();
    changed_.emit();
}

}  // namespace orvu
