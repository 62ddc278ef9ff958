#pragma once

#include <chrono>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvu {

/// When reading has to be over.
using ReadDeadline = std::chrono::steady_clock::time_point;

/// A database of another program as it was at one moment.
class DatabaseSnapshot {
public:
    virtual ~DatabaseSnapshot() = default;

    /// The columns of a row, texts in UTF-8; they stand until `take` returns.
    struct Row {
        std::string_view first;
        std::string_view second;
        std::int64_t third = 0;
    };
    /// Hands each row of a query over, until `take` says false. False if the query came to no end:
    /// because the database has other tables, is damaged, or the deadline is over.
    [[nodiscard]] virtual bool query(const std::string& sql,
                                     const std::function<bool(const Row&)>& take) const = 0;
};

/// Files of other programs, which may be running. None of them is ever changed. Only a regular
/// file is one; links are followed. To be used by any thread.
class ForeignFiles {
public:
    virtual ~ForeignFiles() = default;

    enum class Access {
        absent,
        refused,  ///< it can't be opened, or the system hides what is in its folder
        empty,    ///< nothing comes back
        readable,
    };
    [[nodiscard]] virtual Access access(const std::filesystem::path& file) const = 0;
    [[nodiscard]] virtual bool isFolder(const std::filesystem::path& path) const = 0;
    /// What stands in a folder, in the order of the file system. None if it can't be listed; of a
    /// folder without end, some thousands.
    [[nodiscard]] virtual std::vector<std::filesystem::path> entries(
        const std::filesystem::path& folder) const = 0;

    struct Time {
        std::int64_t seconds = 0;
        std::int64_t nanoseconds = 0;
        friend auto operator<=>(const Time&, const Time&) = default;
    };
    /// When a file was changed last; nothing if there is none.
    [[nodiscard]] virtual std::optional<Time> modified(const std::filesystem::path& file) const = 0;
    /// What stands in a file; nothing if it can't be read to its end by the deadline, or has more
    /// than `limit` bytes.
    [[nodiscard]] virtual std::optional<std::string> text(const std::filesystem::path& file,
                                                          std::size_t limit,
                                                          ReadDeadline deadline) const = 0;
    /// A database with what its program has just written; nothing if it can't be had by the
    /// deadline, which counts for its queries too.
    [[nodiscard]] virtual std::unique_ptr<DatabaseSnapshot> database(
        const std::filesystem::path& file, ReadDeadline deadline) const = 0;
    /// Removes what a process that was killed left behind. To be called once at the start.
    virtual void removeLeftovers() const = 0;
};

}  // namespace orvu
