#include "import/formats/ChromiumBookmarks.h"
#include "import/readers/ImportRead.h"

namespace orvu {
namespace {

constexpr HistoryQuery history{
    "SELECT url, title, last_visit_time FROM urls WHERE last_visit_time > ",
    " AND hidden = 0 ORDER BY last_visit_time DESC LIMIT 5000", microsecondsSince1601};

}  // namespace

void readChromium(const ImportRead& read, ImportResult& result) {
    if (read.bookmarks) result.bookmarks = chromiumBookmarks(read.text("Bookmarks"));
    if (read.history) result.visits = visits(read.database("History").get(), history, read.cut);
}

}  // namespace orvu
