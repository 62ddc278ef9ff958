#include "import/readers/ImportRead.h"

#include "core/history/VisitHistory.h"
#include "import/formats/ImportedPage.h"

namespace orvu {
namespace {

constexpr std::size_t longestText = 256 << 20;  // bytes

}  // namespace

std::string ImportRead::text(std::string_view file) const {
    return sourceText(folder / file, longestText, deadline).value_or("");
}

CopiedDatabase ImportRead::database(std::string_view file) const {
    return {folder / file, caches, deadline};
}

std::vector<Visit> ImportRead::visits(const CopiedDatabase& database,
                                      const HistoryQuery& query) const {
    const std::int64_t earliest = query.time.valueOf(cut);
    const std::string sql =
        std::string{query.beforeCut} + std::to_string(earliest) + std::string{query.afterCut};
    std::vector<Visit> result;
    for (DatabaseRow& row : database.query(sql)) {
        // For the database, a time that is no number is later than any.
        if (row.time <= earliest) continue;
        if (row.url.absoluteString().size() > VisitHistory::addressLimit) continue;
        if (row.title.empty()) row.title = nameOf(row.url);
        result.push_back({Uuid::random(), std::move(row.url), std::move(row.title),
                          query.time.dateOf(row.time)});
    }
    return result;
}

}  // namespace orvu
