#pragma once

#include "foundation/Calendar.h"
#include "import/ImportSource.h"
#include "platform/ForeignFiles.h"

#include <chrono>
#include <filesystem>
#include <memory>
#include <utility>
#include <vector>

namespace orvu {

/// Reads bookmarks and the history of the last 30 days out of other browsers' files, and never
/// changes one. Passwords are not touched. It holds no state and may be used by any thread, which
/// has a copy of its own; reading is slow and belongs off the main thread. What fails gives less,
/// or nothing.
class BrowserImporter {
public:
    using Kind = BrowserKind;
    using Source = ImportSource;
    using Result = ImportResult;

    /// How far back the history goes.
    static constexpr int days = 30;

    BrowserImporter(std::shared_ptr<const ForeignFiles> files, ImportFolders folders)
        : files_(std::move(files)), folders_(std::move(folders)) {}

    /// The browsers that have data here, in the order in which they are shown.
    [[nodiscard]] std::vector<Source> sources() const;

    /// What is read, and when it is.
    struct Request {
        bool bookmarks = true;
        bool history = true;
        Date now = Date::now();
        Calendar calendar = Calendar::current();
        /// How long it may take; what isn't read by then is missing.
        std::chrono::milliseconds patience{30'000};
    };
    /// Reads what the request asks for. It is blocked if the system refuses one of the files.
    [[nodiscard]] Result read(const Source& source, const Request& request) const;

    /// Reads a bookmarks file that a browser exported. Empty if it can't be read.
    [[nodiscard]] std::vector<BookmarkStore::Entry> readHTML(
        const std::filesystem::path& file) const;

private:
    std::shared_ptr<const ForeignFiles> files_;  // also for a thread that outlives the rest
    ImportFolders folders_;
};

}  // namespace orvu
