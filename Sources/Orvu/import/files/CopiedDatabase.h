#pragma once

#include "foundation/Url.h"
#include "import/files/PrivateFolder.h"
#include "import/files/SourceFile.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace orvu {

class SqliteConnection;

/// One row of what a browser keeps about pages.
struct DatabaseRow {
    Url url;
    std::string title;  ///< may be empty
    std::int64_t time = 0;
};

/// A copy of another browser's database, together with its log and journal: the browser may be
/// running, and keeps its own file locked. The copy lies in a private folder and goes with this
/// object.
class CopiedDatabase {
public:
    /// Copies `file` below the folder `caches`. All of this object's work is to be over by the
    /// deadline.
    CopiedDatabase(const std::filesystem::path& file, const std::filesystem::path& caches,
                   ImportDeadline deadline);

    /// The rows of a query that gives an address, a title and a time, without those whose address
    /// is that of no web page, up to a number that no person comes to. None if the copy could not
    /// be made, or the query does not come to its end: because the database has other tables, is
    /// damaged or takes too long.
    [[nodiscard]] std::vector<DatabaseRow> query(const std::string& sql) const;

private:
    bool copy(const std::filesystem::path& file);
    bool copyOnce(const std::filesystem::path& file) const;
    void recover() const;
    void clear() const;
    [[nodiscard]] std::vector<DatabaseRow> rows(SqliteConnection& connection,
                                                const std::string& sql) const;

    const PrivateFolder folder_;
    const ImportDeadline deadline_;
    const std::filesystem::path path_;
    bool isThere_ = false;
};

}  // namespace orvu
