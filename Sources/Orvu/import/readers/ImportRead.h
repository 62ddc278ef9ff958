#pragma once

#include "import/files/CopiedDatabase.h"
#include "import/formats/DatabaseTime.h"
#include "import/ImportSource.h"

#include <filesystem>
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

/// One read of a profile: from where, what is wanted, and what all readers have in common.
struct ImportRead {
    std::filesystem::path folder;  ///< of the profile
    std::filesystem::path caches;  ///< where copies may lie
    bool bookmarks = true;
    bool history = true;
    Date cut;  ///< only what is newer counts as history
    ImportDeadline deadline;

    /// The text of a file of the profile; empty if it can't be read, or has more than 256 MiB.
    [[nodiscard]] std::string text(std::string_view file) const;
    /// A copy of a database of the profile.
    [[nodiscard]] CopiedDatabase database(std::string_view file) const;
    [[nodiscard]] std::vector<Visit> visits(const CopiedDatabase& database,
                                            const HistoryQuery& query) const;
};

// Each of these adds what a profile of its kind has and the read wants.
void readChromium(const ImportRead& read, ImportResult& result);
void readFirefox(const ImportRead& read, ImportResult& result);
void readGnomeWeb(const ImportRead& read, ImportResult& result);
/// The history alone: bookmarks of this kind lie in a property list, which is not read.
void readSafari(const ImportRead& read, ImportResult& result);

}  // namespace orvu
