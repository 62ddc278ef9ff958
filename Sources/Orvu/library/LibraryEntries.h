#pragma once

#include "core/Bookmarks.h"
#include "core/LibrarySection.h"
#include "core/Records.h"
#include "foundation/Calendar.h"

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace orvu {

/// One line of the library's list: an entry of the history, a bookmark or a closed tab, or the
/// header of a day. It is little more than a key; what it says is asked for when it is drawn.
struct LibraryEntry {
    LibrarySection section = LibrarySection::history;
    std::optional<Uuid> id = {};  ///< nothing for a header
    Date date = {};               ///< of the entry; the first moment of a header's day
    std::size_t place = 0;        ///< where the entry stood in its list; 0 for a header

    [[nodiscard]] bool isHeader() const { return !id; }
    /// Whether both are one line, wherever it stands.
    [[nodiscard]] bool isSame(const LibraryEntry& other) const {
        return section == other.section && id == other.id && date == other.date;
    }
    friend bool operator==(const LibraryEntry&, const LibraryEntry&) = default;
};

/// The visits at `places` by days, the newest day first, each below a header. Within a day they
/// keep their order.
[[nodiscard]] std::vector<LibraryEntry> entriesByDay(const std::vector<Visit>& visits,
                                                     const std::vector<std::size_t>& places,
                                                     const Calendar& calendar);

/// The bookmarks that match `query`, in the order of their list.
[[nodiscard]] std::vector<LibraryEntry> bookmarkEntries(const BookmarkStore& bookmarks,
                                                        std::string_view query);

/// The closed tabs whose title holds `query` in any case of letters, the last one first; all of
/// them for the empty text.
[[nodiscard]] std::vector<LibraryEntry> closedEntries(const std::vector<ClosedTab>& closed,
                                                      std::string_view query);

}  // namespace orvu
