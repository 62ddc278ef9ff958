#include "library/LibraryEntries.h"

#include "foundation/text/Text.h"

#include <map>
#include <ranges>
#include <string>

namespace orvu {
namespace {

/// Visits by the beginning of their day. To ask the calendar takes far longer than to see that
/// a moment lies in a day that is known already.
class Days {
public:
    struct Day {
        Date end;  ///< the beginning of the next one
        std::vector<std::size_t> places = {};
    };
    using ByStart = std::map<Date, Day>;

    explicit Days(const Calendar& calendar) : calendar_(calendar) {}

    [[nodiscard]] const ByStart& all() const { return days_; }
    void add(Date date, std::size_t place) { dayOf(date).places.push_back(place); }

private:
    Day& dayOf(Date date) {
        const auto next = days_.upper_bound(date);
        if (next != days_.begin()) {
            Day& known = std::prev(next)->second;
            if (date < known.end) return known;
        }
        const Date start = calendar_.startOfDay(date);
        return days_.try_emplace(start, Day{endOf(start)}).first->second;
    }
    /// `start` itself where the calendar can't tell: such a day is asked for again each time.
    [[nodiscard]] Date endOf(Date start) const {
        const auto nextDay = calendar_.addingDays(1, start);
        return nextDay ? calendar_.startOfDay(*nextDay) : start;
    }

    const Calendar& calendar_;
    ByStart days_;
};

}  // namespace

std::vector<LibraryEntry> entriesByDay(const std::vector<Visit>& visits,
                                       const std::vector<std::size_t>& places,
                                       const Calendar& calendar) {
    Days days{calendar};
    for (const std::size_t place : places) days.add(visits[place].date, place);
    std::vector<LibraryEntry> entries;
    entries.reserve(places.size() + days.all().size());
    for (const auto& [start, day] : days.all() | std::views::reverse) {
        entries.push_back({.date = start});
        for (const std::size_t place : day.places) {
            entries.push_back(
                {LibrarySection::history, visits[place].id, visits[place].date, place});
        }
    }
    return entries;
}

std::vector<LibraryEntry> bookmarkEntries(const BookmarkStore& bookmarks, std::string_view query) {
    std::vector<LibraryEntry> entries;
    std::size_t place = 0;
    for (const auto& match : bookmarks.matching(query)) {
        while (bookmarks.items()[place] != match) ++place;  // both are in the order of the list
        entries.push_back({LibrarySection::bookmarks, match.id, match.date, place++});
    }
    return entries;
}

std::vector<LibraryEntry> closedEntries(const std::vector<ClosedTab>& closed,
                                        std::string_view query) {
    const std::string searched = lowercased(query);
    std::vector<LibraryEntry> entries;
    for (std::size_t place = closed.size(); place-- > 0;) {
        const ClosedTab& tab = closed[place];
        if (!containsCharacters(lowercased(tab.title), searched)) continue;
        entries.push_back({LibrarySection::closed, tab.id, tab.date, place});
    }
    return entries;
}

}  // namespace orvu
