#include "platform/linux/defaults/DatabaseWriter.h"

#include <fcntl.h>
#include <unistd.h>

#include <tuple>

namespace orvu {
namespace {

// Nobody reads the file before it is whole, so it needs no journal.
constexpr const char* settings = R"(
    PRAGMA page_size=32768;
    PRAGMA journal_mode=OFF;
    PRAGMA synchronous=OFF;
    PRAGMA secure_delete=ON;
)";

bool reachesDisk(const std::filesystem::path& file) {
    const FileDescriptor written{open(file.c_str(), O_RDONLY | O_CLOEXEC)};
    return written && fsync(written.get()) == 0;
}

}  // namespace

DatabaseWriter::DatabaseWriter(const DatabaseFile& target)
    : target_(target), file_(halfMade(target)) {
    if (!file_.remove()) return;
    file_.makePrivate();
    connection_ = SqliteConnection{file_.path(), SqliteConnection::Access::readWrite};
    table_ = DefaultsTable{connection_};
    isGood_ = connection_.status() == SQLITE_OK && connection_.execute(settings) == SQLITE_OK &&
              table_.create() == SQLITE_OK && table_.prepare() == SQLITE_OK &&
              connection_.execute("BEGIN") == SQLITE_OK;
}

DatabaseWriter::~DatabaseWriter() {
    table_ = {};
    connection_ = {};
    std::ignore = file_.remove();  // the next writer tries again
}

bool DatabaseWriter::add(std::string_view key, const ValueView& value) {
    return isGood_ = isGood_ && table_.write(key, value) == SQLITE_DONE;
}

bool DatabaseWriter::finish() {
    isGood_ = isGood_ && connection_.execute("COMMIT") == SQLITE_OK;
    table_ = {};
    connection_ = {};
    if (!isGood_ || !reachesDisk(file_.path())) return false;
    // A journal that is left of the file that was there does not fit the new one.
    if (!target_.removeCompanions()) return false;
    return file_.replace(target_);
}

bool DatabaseWriter::removeHalfMade(const DatabaseFile& target) {
    return halfMade(target).remove();
}

DatabaseFile DatabaseWriter::halfMade(const DatabaseFile& target) {
    return target.sibling(".half-made");
}

}  // namespace orvu
