#pragma once

#include "foundation/RandomText.h"
#include "library/LibraryView.h"
#include "support/HistoryWorld.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace orvu {

/// A fixture with a window's library at noon of 2025-10-07 (UTC), a Tuesday.
class LibraryTest : public HistoryTest {
protected:
    using Section = LibrarySection;

    static constexpr double hour = 3600;
    static constexpr double day = 24 * hour;

    LibraryTest() { world.loop.setNow(noon()); }

    [[nodiscard]] static Date noon() { return Date::fromUnixSeconds(1'759'838'400); }
    /// A date so many seconds from noon.
    [[nodiscard]] static Date fromNoon(double seconds) {
        return noon().after(std::chrono::duration<double>{seconds});
    }
    [[nodiscard]] static Visit titled(std::string title, Date date, std::string_view address = a) {
        return {Uuid::random(), url(address), std::move(title), date};
    }
    /// A window with that history and its library open.
    [[nodiscard]] std::unique_ptr<BrowserStore> openLibrary(const std::vector<Visit>& visits,
                                                            Section section = Section::history) {
        world.storeRecords<Visit>("browserVisits", visits);
        auto store = openStore();
        store->setLibrarySection(section);
        world.defaults.written.clear();
        return store;
    }
    /// The titles of the rows and, in brackets, the headers.
    [[nodiscard]] static Strings lines(LibraryView& view) {
        Strings result;
        for (const auto& entry : view.entries()) {
            const auto row = view.row(entry);
            result.push_back(row ? row->title
                                 : std::string{"["}.append(view.dayTitle(entry)).append("]"));
        }
        return result;
    }
    /// The line about a page that is shown with that title. There must be one.
    [[nodiscard]] static LibraryEntry entryOf(LibraryView& view, std::string_view title) {
        for (const auto& entry : view.entries()) {
            const auto row = view.row(entry);
            if (row && row->title == title) return entry;
        }
        ADD_FAILURE() << "no row is titled " << title;
        return {};
    }
    [[nodiscard]] Strings storedTitles() const {
        Strings titles;
        for (const auto& each :
             world.storedRecords<Visit>("browserVisits").value_or(std::vector<Visit>{})) {
            titles.push_back(each.title);
        }
        return titles;
    }
    [[nodiscard]] BookmarkStore& marks() { return world.bookmarks.store(Profile::personal()); }
};

}  // namespace orvu
