#pragma once

#include "import/formats/DatabaseTime.h"
#include "import/ImportSource.h"
#include "platform/ForeignFiles.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace orvu {

/// A query for the pages of a history, in two parts with a time between them: only what is later
/// counts.
struct HistoryQuery {
    std::string_view beforeCut;
    std::string_view afterCut;
    DatabaseTime time;
};

/// One row of what a browser keeps about web pages.
struct PageRow {
    Url url;
    std::string title;  ///< may be empty
    std::int64_t time = 0;
};

/// One read of a profile: from where, what is wanted, and what all readers have in common.
struct ImportRead {
    const ForeignFiles& files;     ///< must outlive the read
    std::filesystem::path folder;  ///< of the profile
    bool bookmarks = true;
    bool history = true;
    Date cut;  ///< only what is newer counts as history
    ReadDeadline deadline;

    /// The text of a file of the profile; empty if it can't be read, or has more than 256 MiB.
    [[nodiscard]] std::string text(std::string_view file) const;
    /// A database of the profile; nothing if it can't be read.
    [[nodiscard]] std::unique_ptr<DatabaseSnapshot> database(std::string_view file) const;
};

/// The rows of a query that gives an address, a title and a time, without those whose address is
/// that of no web page, up to a number that no person comes to. None if there is no database, or if
/// the query comes to no end: a half is worse than nothing.
[[nodiscard]] std::vector<PageRow> query(const DatabaseSnapshot* database, const std::string& sql);
[[nodiscard]] std::vector<Visit> visits(const DatabaseSnapshot* database,
                                        const HistoryQuery& history, Date cut);

// Each of these adds what a profile of its kind has and the read wants.
void readChromium(const ImportRead& read, ImportResult& result);
void readFirefox(const ImportRead& read, ImportResult& result);
void readGnomeWeb(const ImportRead& read, ImportResult& result);
void readSafari(const ImportRead& read, ImportResult& result);

}  // namespace orvu
