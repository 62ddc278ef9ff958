#pragma once

#include "core/Bookmarks.h"
#include "core/Records.h"
#include "notch/candidates/PastSearches.h"
#include "notch/candidates/TitledRows.h"
#include "notch/candidates/TopHits.h"

#include <cstddef>
#include <deque>
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

/// What the candidates of the notch are computed from, prepared once for many queries. What is
/// taken over again is compared with what stands, and only what is new is prepared.
class NotchSnapshot {
public:
    using Bookmark = BookmarkStore::Bookmark;

    /// How many visits of the present day are of use.
    static constexpr std::size_t todayCount = 4;

    /// Takes over what stands in a window now. `current`, which may be null, is the tab that the
    /// notch belongs to.
    void take(const BrowserStore& store, const BrowserTab* current);

    /// Oldest first.
    void setVisits(const std::vector<Visit>& visits);
    /// The last visits of the present day, the newest first.
    void setLatestOfToday(std::vector<Visit> visits);
    void setBookmarks(const std::vector<Bookmark>& bookmarks);
    void setTabs(std::vector<NotchTab> tabs, const std::optional<Uuid>& current);

    [[nodiscard]] const std::deque<Visit>& visits() const { return visits_; }
    [[nodiscard]] const std::vector<Visit>& latestOfToday() const { return today_; }
    [[nodiscard]] const std::vector<Bookmark>& bookmarks() const { return bookmarks_; }
    [[nodiscard]] const std::vector<NotchTab>& tabs() const { return tabs_; }
    [[nodiscard]] const std::optional<Uuid>& currentTab() const { return currentTab_; }

    /// The titles and addresses of `visits()`; empty ones for pages of results.
    [[nodiscard]] const TitledRows& visitRows() const { return visitRows_; }
    [[nodiscard]] const TitledRows& bookmarkRows() const { return bookmarkRows_; }
    /// The titles of `tabs()` and their hosts without "www.".
    [[nodiscard]] const TitledRows& tabRows() const { return tabRows_; }
    [[nodiscard]] const PastSearches& pastSearches() const { return pastSearches_; }
    [[nodiscard]] const TopHits& topHits() const { return topHits_; }
    /// No text or address that is compared is longer, in bytes.
    [[nodiscard]] std::size_t maxTextBytes() const { return longest_; }

private:
    /// How many visits at `place` stand before `visit`; nothing if more than a few do, or all.
    [[nodiscard]] std::optional<std::size_t> visitsBefore(const Visit& visit,
                                                          std::size_t place) const;
    void insertVisit(std::size_t place, const Visit& visit);
    void eraseVisit(std::size_t place);
    void eraseVisitsFrom(std::size_t place);
    void insertRow(TitledRows& rows, std::size_t row, const std::string& title,
                   std::string_view address);

    std::deque<Visit> visits_;
    std::vector<Visit> today_;
    std::vector<Bookmark> bookmarks_;
    std::vector<NotchTab> tabs_;
    std::optional<Uuid> currentTab_;
    TitledRows visitRows_;
    TitledRows bookmarkRows_;
    TitledRows tabRows_;
    PastSearches pastSearches_;
    TopHits topHits_;
    std::size_t longest_ = 0;
};

}  // namespace orvu
