#pragma once

#include "core/BrowserTab.h"
#include "foundation/Signal.h"
#include "foundation/async/TaskScope.h"
#include "site/SiteInfo.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orvu {

/// What is said about the site of the tab in front, and what a person can do about it.
class SitePanel {
public:
    /// `permissions` must outlive this. `persistence` says whether what is chosen here may be
    /// written down.
    SitePanel(SitePermissions& permissions, Persistence persistence);
    SitePanel(const SitePanel&) = delete;
    SitePanel& operator=(const SitePanel&) = delete;

    /// From now on this is about `tab`, which may be nothing. True if it was about another one.
    bool setTab(const std::shared_ptr<BrowserTab>& tab);

    [[nodiscard]] SiteSecurity security() const;
    /// The host without any "www."; empty for a page without a host.
    [[nodiscard]] std::string site() const;
    [[nodiscard]] SitePermissions::Choice choice(CaptureKind kind) const;
    /// Chooses for the site. What is blocked ends at once in the tab's page.
    void choose(SitePermissions::Choice choice, CaptureKind kind);

    /// What the tab's page asked for and was refused.
    [[nodiscard]] bool isRefused(RefusedPermission permission) const;

    /// Whether there is a site whose data can be removed.
    [[nodiscard]] bool canClear() const { return !site().empty(); }
    /// Whether its data were removed while this was about its tab.
    [[nodiscard]] bool isCleared() const { return cleared_ && cleared_ == site(); }
    /// Removes what the site stored in the tab's own data store, and then loads the page anew.
    void clearSiteData();

    /// Calls `slot` after a choice changed and after the data were removed, though not after
    /// changes of the tab itself.
    sigc::connection connectChanged(const sigc::slot<void()>& slot) {
        return changed_.connect(slot);
    }

private:
    [[nodiscard]] Task<void> clear(std::shared_ptr<WebsiteData> data, std::string site,
                                   std::weak_ptr<BrowserTab> tab);
    void finishClearing(const std::string& site, const std::weak_ptr<BrowserTab>& tab);

    SitePermissions& permissions_;
    const Persistence persistence_;
    std::weak_ptr<BrowserTab> tab_;
    std::optional<std::string> cleared_;  ///< the site whose data were removed last
    sigc::signal<void()> changed_;
    ScopedConnection permissionsChanged_;
    TaskScope tasks_;  // last, so that it ends before what its work uses
};

}  // namespace orvu
