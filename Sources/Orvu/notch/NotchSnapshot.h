#pragma once

#include "core/Bookmarks.h"
#include "core/Records.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace orvu {

class BrowserStore;
class BrowserTab;

/// An open tab as the notch offers it.
struct NotchTab {
    Uuid id;
    std::string title;
    std::optional<Url> url;

    friend bool operator==(const NotchTab&, const NotchTab&) = default;
};

/// What the candidates of the notch are computed from, prepared once for many queries.
class NotchSnapshot {
public:
    /// How many visits of the present day are of use.
    static constexpr std::size_t todayCount = 4;

    /// Takes over what stands in a window now. `current`, which may be null, is the tab that the
    /// notch belongs to.
    void take(const BrowserStore& store, const BrowserTab* current);

    /// Oldest first.
    void setVisits(const std::vector<Visit>& visits);
    /// The last visits of the present day, the newest first.
    void setLatestOfToday(std::vector<Visit> visits);
    void setBookmarks(const std::vector<BookmarkStore::Bookmark>& bookmarks);
    void setTabs(std::vector<NotchTab> tabs, const std::optional<Uuid>& current);

    [[nodiscard]] const std::vector<Visit>& visits() const { return visits_; }
    [[nodiscard]] const std::vector<Visit>& latestOfToday() const { return today_; }
    [[nodiscard]] const std::vector<BookmarkStore::Bookmark>& bookmarks() const {
        return bookmarks_;
    }
    [[nodiscard]] const std::vector<NotchTab>& tabs() const { return tabs_; }
    [[nodiscard]] const std::optional<Uuid>& currentTab() const { return currentTab_; }

private:
    std::vector<Visit> visits_;
    std::vector<Visit> today_;
    std::vector<BookmarkStore::Bookmark> bookmarks_;
    std::vector<NotchTab> tabs_;
    std::optional<Uuid> currentTab_;
};

}  // namespace orvu
