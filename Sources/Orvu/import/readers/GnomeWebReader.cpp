#include "import/formats/GnomeWebBookmarks.h"
#include "import/readers/ImportRead.h"

namespace orvu {
namespace {

/// Old versions counted in seconds. Until the year 5138 these are fewer than the microseconds of
/// the second day of 1970.
constexpr HistoryQuery history{
    "SELECT url, title, CASE WHEN last_visit_time < 100000000000 THEN last_visit_time * 1000000 "
    "ELSE last_visit_time END AS time FROM urls WHERE time > ",
    " ORDER BY 3 DESC LIMIT 5000", microsecondsSince1970};

}  // namespace

void readGnomeWeb(const ImportRead& read, ImportResult& result) {
    if (read.bookmarks) result.bookmarks = gnomeWebBookmarks(read.text("bookmarks.gvdb"));
    if (read.history)
        result.visits = visits(read.database("ephy-history.db").get(), history, read.cut);
}

}  // namespace orvu
