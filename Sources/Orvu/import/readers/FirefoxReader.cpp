#include "import/formats/ImportedPage.h"
#include "import/readers/ImportRead.h"

#include <unordered_set>

namespace orvu {
namespace {

constexpr const char* bookmarks =
    "SELECT p.url, b.title, 0 FROM moz_bookmarks b JOIN moz_places p ON b.fk = p.id "
    "WHERE b.type = 1";
constexpr HistoryQuery history{
    "SELECT url, title, last_visit_date FROM moz_places WHERE last_visit_date > ",
    " ORDER BY last_visit_date DESC LIMIT 5000", microsecondsSince1970};

/// A page with tags has one row more for each of them, without a title and often in front of the
/// bookmark's own. Such a row counts only where the page has no other.
std::vector<BookmarkStore::Entry> entries(std::vector<PageRow> rows) {
    std::unordered_set<Url> titled;
    for (const PageRow& row : rows) {
        if (!row.title.empty()) titled.insert(row.url);
    }
    std::vector<BookmarkStore::Entry> result;
    for (PageRow& row : rows) {
        if (row.title.empty() && titled.contains(row.url)) continue;
        if (row.title.empty()) row.title = nameOf(row.url);
        result.emplace_back(std::move(row.url), std::move(row.title));
    }
    return result;
}

}  // namespace

void readFirefox(const ImportRead& read, ImportResult& result) {
    if (!read.bookmarks && !read.history) return;
    const auto places = read.database("places.sqlite");
    if (read.bookmarks) result.bookmarks = entries(query(places.get(), bookmarks));
    if (read.history) result.visits = visits(places.get(), history, read.cut);
}

}  // namespace orvu
