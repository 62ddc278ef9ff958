#include "import/readers/ImportRead.h"

#include "core/history/VisitHistory.h"
#include "import/formats/ImportedPage.h"

namespace orvu {
namespace {

constexpr std::size_t longestText = 256 << 20;  // bytes
constexpr std::size_t mostRows = 100'000;
constexpr std::size_t mostBytes = 64 << 20;  // of addresses and titles

}  // namespace

std::string ImportRead::text(std::string_view file) const {
    return files.text(folder / file, longestText, deadline).value_or("");
}

std::unique_ptr<DatabaseSnapshot> ImportRead::database(std::string_view file) const {
    return files.database(folder / file, deadline);
}

std::vector<PageRow> query(const DatabaseSnapshot* database, const std::string& sql) {
    std::vector<PageRow> rows;
    std::size_t bytes = 0;
    const auto take = [&](const DatabaseSnapshot::Row& row) {
        auto url = webBookmark(row.first);
        if (!url) return true;
        std::string title = importedTitle(row.second);
        bytes += row.first.size() + title.size();
        rows.push_back({std::move(*url), std::move(title), row.third});
        return rows.size() < mostRows && bytes < mostBytes;
    };
    return database && database->query(sql, take) ? rows : std::vector<PageRow>{};
}

std::vector<Visit> visits(const DatabaseSnapshot* database, const HistoryQuery& history, Date cut) {
    const std::int64_t earliest = history.time.valueOf(cut);
    const std::string sql =
        std::string{history.beforeCut} + std::to_string(earliest) + std::string{history.afterCut};
    std::vector<Visit> result;
    for (PageRow& row : query(database, sql)) {
        // For the database, a time that is no number is later than any.
        if (row.time <= earliest) continue;
        if (row.url.absoluteString().size() > VisitHistory::addressLimit) continue;
        if (row.title.empty()) row.title = nameOf(row.url);
        result.push_back({Uuid::random(), std::move(row.url), std::move(row.title),
                          history.time.dateOf(row.time)});
    }
    return result;
}

}  // namespace orvu
