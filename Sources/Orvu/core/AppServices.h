#pragma once

#include "core/Bookmarks.h"
#include "core/TrackerBlocker.h"
#include "foundation/NotificationCenter.h"
#include "pagetools/ReaderLook.h"
#include "platform/Platform.h"
#include "profiles/Profiles.h"
#include "search/Suggestions.h"
#include "profiles/Settings.h"
#include "site/Downloads.h"
#include "site/Favicons.h"
#include "site/permissions/SitePermissions.h"

#include <memory>

namespace orvu {

/// What all windows of the program share, on the desktop that it runs on.
class AppServices {
public:
    /// Takes the engine's downloads from now on, and begins to compile the rules against trackers
    /// if they are wanted. All that `platform` refers to must outlive this.
    explicit AppServices(const Platform& platform);
    AppServices(const AppServices&) = delete;
    AppServices& operator=(const AppServices&) = delete;
    ~AppServices();

    [[nodiscard]] const Platform& platform() const { return platform_; }
    [[nodiscard]] Settings& settings() { return settings_; }
    [[nodiscard]] NotificationCenter& notifications() { return notifications_; }
    [[nodiscard]] ProfileStore& profiles() { return profiles_; }
    [[nodiscard]] BookmarkStores& bookmarks() { return bookmarks_; }
    [[nodiscard]] FaviconStore& favicons() { return favicons_; }
    [[nodiscard]] SitePermissions& permissions() { return permissions_; }
    [[nodiscard]] TrackerBlocker& trackers() { return trackers_; }
    [[nodiscard]] ReaderLook& readerLook() { return readerLook_; }
    [[nodiscard]] DownloadStore& downloads() { return downloads_; }
    /// Predictions for one field.
    [[nodiscard]] std::unique_ptr<Suggestions> makeSuggestions();

private:
    const Platform platform_;
    Settings settings_;
    NotificationCenter notifications_;
    ProfileStore profiles_;
    BookmarkStores bookmarks_;
    FaviconStore favicons_;
    SitePermissions permissions_;
    TrackerBlocker trackers_;
    ReaderLook readerLook_;
    DownloadStore downloads_;
};

}  // namespace orvu
