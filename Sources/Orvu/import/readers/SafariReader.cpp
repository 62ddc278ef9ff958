#include "import/formats/SafariBookmarks.h"
#include "import/readers/ImportRead.h"

namespace orvu {
namespace {

constexpr HistoryQuery history{
    "SELECT i.url, v.title, CAST(MAX(v.visit_time) AS INTEGER) FROM history_visits v "
    "JOIN history_items i ON v.history_item = i.id WHERE v.visit_time > ",
    " GROUP BY i.id ORDER BY 3 DESC LIMIT 5000", secondsSince2001};

}  // namespace

void readSafari(const ImportRead& read, ImportResult& result) {
    if (read.bookmarks) result.bookmarks = safariBookmarks(read.text("Bookmarks.plist"));
    if (read.history) result.visits = visits(read.database("History.db").get(), history, read.cut);
}

}  // namespace orvu
