#include "platform/linux/foreign/CopiedDatabase.h"

#include "platform/linux/defaults/Sqlite.h"
#include "platform/linux/foreign/SourceFile.h"

#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <string_view>
#include <system_error>

namespace orvu {
namespace {

using Path = std::filesystem::path;

constexpr std::array<const char*, 3> companions{"-wal", "-shm", "-journal"};
constexpr std::size_t largestFile = std::size_t{4} << 30;
constexpr int largestValue = 64 << 20;  // bytes
/// How often a copy is made anew because the browser wrote meanwhile.
constexpr int copies = 3;

Path beside(const Path& file, const char* suffix) {
    Path result = file;
    result += suffix;
    return result;
}

/// What changes when somebody writes.
struct FileState {
    ino_t node = 0;
    off_t size = -1;
    timespec changed{};

    explicit FileState(const Path& file) {
        struct stat facts{};
        if (stat(file.c_str(), &facts) != 0) return;
        node = facts.st_ino;
        size = facts.st_size;
        changed = facts.st_mtim;
    }
    friend bool operator==(const FileState& a, const FileState& b) {
        return a.node == b.node && a.size == b.size && a.changed.tv_sec == b.changed.tv_sec &&
               a.changed.tv_nsec == b.changed.tv_nsec;
    }
};

/// The index says nothing that the log doesn't.
std::array<FileState, 3> stateOf(const Path& file) {
    return {FileState{file}, FileState{beside(file, "-wal")}, FileState{beside(file, "-journal")}};
}

/// Whether a journal is part of a transaction over several databases. The library would look for
/// the file that it names, among the browser's own, and could delete it.
bool namesAnotherFile(const Path& journal) {
    constexpr std::string_view mark = "\xD9\xD5\x05\xF9\x20\xA1\x63\xD7";
    const auto file = openSource(journal);
    std::array<char, mark.size()> tail{};
    const off_t end = lseek(file.get(), 0, SEEK_END);
    if (end < 0) return true;
    if (end < static_cast<off_t>(tail.size())) return false;
    const ssize_t count =
        pread(file.get(), tail.data(), tail.size(), end - static_cast<off_t>(tail.size()));
    return count != static_cast<ssize_t>(tail.size()) || std::ranges::equal(tail, mark);
}

int isOver(void* deadline) {
    return std::chrono::steady_clock::now() >= *static_cast<const ReadDeadline*>(deadline) ? 1 : 0;
}

/// Lets statements end at the deadline, which must outlive the connection, and trusts nothing that
/// stands in the database.
void restrict(SqliteConnection& connection, const ReadDeadline& deadline) {
    sqlite3* const handle = connection.handle();
    constexpr int steps = 1000;  // of the library's machine: some microseconds
    // The library wants a pointer to what it may change; the deadline is only read.
    sqlite3_progress_handler(handle, steps, isOver, const_cast<ReadDeadline*>(&deadline));
    sqlite3_limit(handle, SQLITE_LIMIT_LENGTH, largestValue);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(handle, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    // What a query puts aside would lie in a folder that all share.
    connection.execute("PRAGMA temp_store = MEMORY");
}

}  // namespace

CopiedDatabase::CopiedDatabase(const Path& file, const Path& caches, ReadDeadline deadline)
    : folder_(caches), deadline_(deadline), path_(folder_.path() / file.filename()) {
    isThere_ = !folder_.path().empty() && copy(file);
    if (isThere_) recover();
}

bool CopiedDatabase::copy(const Path& file) {
    for (int tries = 1;; ++tries) {
        const auto before = stateOf(file);
        if (!copyOnce(file)) return false;
        // A browser that never rests is taken as it is: such a copy may lack the last rows, or not
        // be readable.
        if (tries == copies || stateOf(file) == before) return true;
        clear();
    }
}

bool CopiedDatabase::copyOnce(const Path& file) const {
    if (!copySource(file, path_, largestFile, deadline_)) return false;
    for (const char* const suffix : companions) {
        const Path target = beside(path_, suffix);
        if (copySource(beside(file, suffix), target, largestFile, deadline_)) continue;
        std::error_code failure;
        std::filesystem::remove(target, failure);
    }
    return true;
}

void CopiedDatabase::clear() const {
    std::error_code failure;
    std::filesystem::remove(path_, failure);
    for (const char* const suffix : companions) {
        std::filesystem::remove(beside(path_, suffix), failure);
    }
}

/// Takes back in the copy what the browser was just writing, which takes a connection that may
/// write. Without it nothing can be read.
void CopiedDatabase::recover() const {
    const Path journal = beside(path_, "-journal");
    if (!isRegularFile(journal) || namesAnotherFile(journal)) return;
    SqliteConnection connection{path_, SqliteConnection::Access::readWrite};
    if (connection.status() != SQLITE_OK) return;
    restrict(connection, deadline_);
    (void)connection.queryInteger("SELECT count(*) FROM sqlite_master");
}

bool CopiedDatabase::query(const std::string& sql,
                           const std::function<bool(const Row&)>& take) const {
    if (!isThere_) return false;
    SqliteConnection connection{path_, SqliteConnection::Access::readOnly};
    if (connection.status() != SQLITE_OK) return false;
    restrict(connection, deadline_);
    auto statement = connection.prepare(sql);
    if (!statement) return false;
    SqliteStatement::Turn turn{statement};
    int code = turn.step();
    while (code == SQLITE_ROW && take({turn.text(0), turn.text(1), turn.integer(2)})) {
        code = turn.step();
    }
    return code == SQLITE_DONE || code == SQLITE_ROW;
}

}  // namespace orvu
