#pragma once

#include "notch/candidates/NotchCandidates.h"
#include "notch/candidates/NotchSnapshot.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orvu {

/// A fixture that makes up what a notch knows, and asks for its candidates.
class NotchTest : public testing::Test {
protected:
    using Strings = std::vector<std::string>;
    using Site = NotchEntry::SiteIcon;
    using Sign = NotchEntry::Sign;

    [[nodiscard]] static Url url(std::string_view text) { return Url::parse(text).value(); }
    /// An identifier of its own for each number.
    [[nodiscard]] static Uuid identifier(int number) {
        const std::string digits = std::to_string(number);
        return *Uuid::parse("00000000-0000-0000-0000-" + std::string(12 - digits.size(), '0') +
                            digits);
    }

    /// Adds the latest visit. Its time is its number in the history.
    const Visit& visit(std::string_view address, std::string title = "") {
        const auto number = static_cast<int>(visits.size());
        visits.push_back(
            {identifier(number), url(address), std::move(title), Date{double(number)}});
        return visits.back();
    }
    /// Adds the visit of a page of results as the latest.
    void search(std::string_view text) {
        visit("https://www.google.com/search?q=" +
              percentEncoded(text, QueryCharacters::bangQuery));
    }
    const BookmarkStore::Bookmark& bookmark(std::string_view address, std::string title = "") {
        const auto number = 1000 + static_cast<int>(bookmarks.size());
        bookmarks.push_back({identifier(number), url(address), std::move(title), Date{}});
        return bookmarks.back();
    }
    const NotchTab& tab(const std::optional<Url>& address, std::string title = "") {
        const auto number = 2000 + static_cast<int>(tabs.size());
        tabs.push_back({identifier(number), std::move(title), address});
        return tabs.back();
    }

    [[nodiscard]] NotchCandidates ask(std::string query) {
        question.query = std::move(query);
        NotchSnapshot snapshot;
        snapshot.setVisits(visits);
        snapshot.setLatestOfToday(today);
        snapshot.setBookmarks(bookmarks);
        snapshot.setTabs(tabs, current);
        return NotchCandidates{snapshot, question};
    }

    /// The identifiers of the rows of one section, in order.
    [[nodiscard]] static Strings section(const NotchCandidates& candidates, std::string_view name) {
        Strings result;
        for (const auto& entry : candidates.entries()) {
            if (entry.section == name) result.push_back(entry.id);
        }
        return result;
    }
    /// The identifiers of all rows, in order.
    [[nodiscard]] static Strings rows(const NotchCandidates& candidates) {
        Strings result;
        for (const auto& entry : candidates.entries()) result.push_back(entry.id);
        return result;
    }

    std::vector<Visit> visits;
    std::vector<Visit> today;
    std::vector<BookmarkStore::Bookmark> bookmarks;
    std::vector<NotchTab> tabs;
    std::optional<Uuid> current;
    NotchQuestion question{.shortTime = [](Date date) {
        return "at " + std::to_string(static_cast<int>(date.secondsSinceReference()));
    }};
};

}  // namespace orvu
