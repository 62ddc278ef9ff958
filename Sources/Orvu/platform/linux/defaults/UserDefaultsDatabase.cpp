#include "platform/linux/defaults/UserDefaultsDatabase.h"

#include "platform/linux/defaults/Backup.h"
#include "platform/linux/defaults/DatabaseWriter.h"

#include <algorithm>
#include <string>
#include <system_error>
#include <utility>

namespace orvu {
namespace {

/// Beyond this the check of the whole file would be felt at the start. Damage then shows, and is
/// dealt with, when a damaged value is asked for.
constexpr std::uintmax_t checkedFileSize = 16 << 20;

// The history is the largest value, some megabyte that is written with each visit. With large
// pages that takes less than half the time that the library's usual 4,096 bytes take. What is
// deleted is overwritten, so that a history that was cleared is not left in free pages. A write
// reaches the system's cache before it returns, which the process's end can't undo; the disk is
// waited for by the checkpoints alone.
constexpr const char* settings = R"(
    PRAGMA page_size=32768;
    PRAGMA journal_mode=WAL;
    PRAGMA synchronous=NORMAL;
    PRAGMA wal_autocheckpoint=0;
    PRAGMA journal_size_limit=16777216;
    PRAGMA cache_size=-8000;
    PRAGMA secure_delete=ON;
)";

// While opening, another process may just be tidying up the log; later a write may wait for one
// of another process, but not so long that the window stands still.
constexpr int openingPatience = 2000;  // milliseconds
constexpr int patience = 250;

/// The same key of the same profile as `key`'s.
std::string besideKey(std::string_view name, std::string_view key) {
    const auto profile = key.find('.');
    std::string result{name};
    if (profile != std::string_view::npos) result += key.substr(profile);
    return result;
}

bool isDamage(int code) {
    constexpr int primary = 0xFF;
    return (code & primary) == SQLITE_CORRUPT || (code & primary) == SQLITE_NOTADB;
}

}  // namespace

UserDefaultsDatabase::UserDefaultsDatabase(const std::filesystem::path& file,
                                           StorageOptions options)
    : file_(file), options_(std::move(options)) {
    openOrReplace();
}

bool UserDefaultsDatabase::isPassing(std::string_view key) const {
    return std::ranges::any_of(options_.passing, [&](std::string_view name) {
        return key.starts_with(name) && (key.size() == name.size() || key[name.size()] == '.');
    });
}

UserDefaultsDatabase::~UserDefaultsDatabase() {
    if (!unwritten_.empty()) commit();
    close();
}

template <class Work>
int UserDefaultsDatabase::run(const Work& work) {
    const int code = work();
    if (!isDamage(code)) return code;
    startAnew();
    return work();
}

std::optional<StoredValue> UserDefaultsDatabase::read(std::string_view key) {
    const auto find = [&] { return unwritten_.find(key); };
    if (const auto found = find(); found != unwritten_.end()) return found->second.value;
    std::optional<DefaultsTable::Row> row;
    run([&] { return table_.read(key, row); });
    if (!row) {
        const auto found = find();  // it may have been taken over from a damaged file meanwhile
        return found != unwritten_.end() ? found->second.value : std::nullopt;
    }
    if (!row->isSound) return repaired(key);
    if (row->value.type == SQLITE_NULL) return std::nullopt;
    trusted_.emplace(key);
    return std::move(row->value);
}

void UserDefaultsDatabase::write(std::string_view key, std::optional<StoredValue> value) {
    write(key, Write{std::move(value)});
}

void UserDefaultsDatabase::write(std::string_view key, Write write) {
    write.isLater = unwritten_.contains(key);
    unwritten_.insert_or_assign(std::string{key}, std::move(write));
    if (batches_ == 0) commit();
}

void UserDefaultsDatabase::endBatch() {
    if (--batches_ == 0 && !unwritten_.empty()) commit();
}

void UserDefaultsDatabase::commit() {
    if (run([&] { return tryCommit(); }) != SQLITE_OK) return;
    for (const auto& [key, write] : unwritten_) {
        trusted_.insert(key);
        if (const auto found = doubted_.find(key); found != doubted_.end()) doubted_.erase(found);
    }
    unwritten_.clear();
    if (hasErased_ && housekeeper_) housekeeper_->erasureWasNoted(hasDeleted_);
}

int UserDefaultsDatabase::tryCommit() {
    hasErased_ = false;
    hasDeleted_ = false;
    int code = connection_.execute("BEGIN IMMEDIATE");
    if (code != SQLITE_OK) return code;
    for (const auto& [key, write] : unwritten_) {
        code = writeOne(key, write);
        if (code != SQLITE_DONE) break;
    }
    if (code == SQLITE_DONE) code = connection_.execute("COMMIT");
    if (code != SQLITE_OK) connection_.rollBack();
    return code;
}

int UserDefaultsDatabase::writeOne(const std::string& key, const Write& write) {
    int code = SQLITE_DONE;
    if (write.isRepair) {
        code = table_.setAside(key);
    } else if (write.value) {
        code = seeToPrevious(key, write);
    } else {
        code = noteDeletion(key);
    }
    if (code != SQLITE_DONE) return code;
    return write.value ? table_.write(key, write.value->view()) : table_.remove(key);
}

int UserDefaultsDatabase::seeToPrevious(const std::string& key, const Write& write) {
    using Check = DefaultsTable::Check;
    const auto value = write.value->view();
    const auto check = trusted_.contains(key) ? Check::none : Check::checksum;
    bool isBad = doubted_.contains(key);
    bool loses = false;
    const auto compare = [&](const ValueView& previous, bool isSound) {
        isBad = isBad || !isSound;
        // Of several changes in one, the first may have deleted what a full list would drop.
        loses = !isBad && (write.isLater ? !value.extends(previous) : value.loses(previous));
    };
    const int code = table_.inspect(key, check, compare);
    if (code != SQLITE_ROW && code != SQLITE_DONE) return code;
    const bool isDocument = value.type == SQLITE_BLOB && !isPassing(key);
    if (isDocument && (loses || value.isEmpty())) return noteDeletion(key);
    if (isBad) return table_.setAside(key);
    if (!loses) return SQLITE_DONE;
    hasErased_ = true;
    return table_.note(key, false);
}

int UserDefaultsDatabase::noteDeletion(const std::string& key) {
    hasErased_ = true;
    hasDeleted_ = true;
    int code = table_.note(key, true);
    if (code == SQLITE_DONE) code = table_.dropSetAside(key);
    // They show what was open, and so perhaps what is deleted now.
    for (const auto& name : options_.passing) {
        if (code == SQLITE_DONE) code = table_.dropSetAside(besideKey(name, key));
    }
    return code;
}

std::optional<StoredValue> UserDefaultsDatabase::repaired(std::string_view key) {
    const auto erasures = table_.erasures();
    const bool isOutdated = std::ranges::any_of(
        erasures, [&](const Erasure& erasure) { return erasure.isDeletion && erasure.key == key; });
    std::optional<StoredValue> older;
    if (!isOutdated) {
        const FolderLock lock{file_.folder()};
        auto values = Backup{file_}.values();
        if (const auto found = values.find(key); found != values.end()) {
            older = std::move(found->second);
        }
    }
    write(key, Write{older, true});
    return older;
}

void UserDefaultsDatabase::openOrReplace() {
    if (!file_.makeFolder()) return openInMemory();
    const FolderLock lock{file_.folder()};
    const auto whole = file_.salvaged();
    if (file_.isAbsent() && (whole.hasContent() || Backup{file_}.exists())) {
        // It is gone, but not by this program: what there is of it takes its place.
        return replaceDamaged();
    }
    switch (open()) {
        case Opening::good:
            return;
        case Opening::damaged:
            return replaceDamaged();
        case Opening::refused:
            return readIntoMemory();
    }
}

void UserDefaultsDatabase::readIntoMemory() {
    openInMemory();
    auto salvage = Salvage::of(file_);
    if (!salvage.isComplete) salvage = salvaged();
    for (const auto& [key, value] : salvage.sound) table_.write(key, value.view());
}

UserDefaultsDatabase::Opening UserDefaultsDatabase::open() {
    file_.makePrivate();
    if (file_.isUnusable()) return Opening::damaged;
    connection_ = SqliteConnection{file_.path(), SqliteConnection::Access::create};
    if (connection_.status() != SQLITE_OK) return failure(connection_.status());
    sqlite3_busy_timeout(connection_.handle(), openingPatience);
    if (connection_.execute(settings) != SQLITE_OK) return failure(connection_.status());
    const Opening result = openTable();
    if (result != Opening::good) return result;
    sqlite3_busy_timeout(connection_.handle(), patience);
    identity_ = file_.identity();
    watch();
    return Opening::good;
}

UserDefaultsDatabase::Opening UserDefaultsDatabase::openTable() {
    table_ = DefaultsTable{connection_};
    const auto form = table_.form();
    if (form == DefaultsTable::Form::unreadable) return failure(connection_.status());
    if (form == DefaultsTable::Form::strange || !isSound()) return Opening::damaged;
    if (sqlite3_db_readonly(connection_.handle(), "main") == 1) {
        // If the system has nothing against writes, the file's header has.
        return file_.isWritable() ? Opening::damaged : Opening::refused;
    }
    if (const int code = table_.create(); code != SQLITE_OK) return failure(code);
    const int code = table_.prepare();
    return code == SQLITE_OK ? Opening::good : failure(code);
}

UserDefaultsDatabase::Opening UserDefaultsDatabase::failure(int code) const {
    // The general error says that a statement does not fit the tables.
    return isDamage(code) || code == SQLITE_ERROR ? Opening::damaged : Opening::refused;
}

bool UserDefaultsDatabase::isSound() {
    std::error_code failure;
    const auto size = std::filesystem::file_size(file_.path(), failure);
    if (failure) return true;
    // The library reads zeros behind the end of a file that was cut amid its last page.
    const auto pageSize = connection_.queryInteger("PRAGMA page_size").value_or(1);
    if (size % static_cast<std::uintmax_t>(pageSize) != 0 && !file_.hasLog()) return false;
    if (size > checkedFileSize) return true;
    // In another encoding every text would be read as another one.
    if (connection_.queryInteger("SELECT encoding = 'UTF-8' FROM pragma_encoding") == 0) {
        return false;
    }
    // Not the quick check alone: that does not find keys that only a scan would find.
    const auto isWhole =
        connection_.queryInteger("SELECT integrity_check = 'ok' FROM pragma_integrity_check(1)");
    return isWhole ? *isWhole != 0 : !isDamage(connection_.status());
}

void UserDefaultsDatabase::openInMemory() {
    close();
    connection_ = SqliteConnection{SqliteConnection::memory, SqliteConnection::Access::create};
    (void)openTable();
}

// At each moment of this the values stand in a whole file: the damaged one, the salvaged one, or
// the salvaged one under the name of the other.
void UserDefaultsDatabase::replaceDamaged() {
    connection_.keepLogAtClose();  // the file is set aside as it is
    close();
    const auto whole = file_.salvaged();
    Salvage salvage;
    bool isWritten = file_.isAbsent() && whole.hasContent();
    if (!isWritten) {
        salvage = salvaged();
        isWritten = writeSalvaged(salvage);
    }
    const bool isFree = file_.isAbsent() || file_.setAside();
    const bool isReplaced = isFree && isWritten && whole.replace(file_);
    if (!isFree || open() != Opening::good) openInMemory();
    if (isReplaced) return;
    for (auto& [key, value] : salvage.sound) unwritten_.try_emplace(key, Write{std::move(value)});
    if (batches_ == 0 && !unwritten_.empty()) commit();
}

void UserDefaultsDatabase::startAnew() {
    const FolderLock lock{file_.folder()};
    if (file_.identity() == identity_) {
        replaceDamaged();
    } else {
        // Another process has met the damage first, and has put a new file in its place.
        close();
        if (open() != Opening::good) openInMemory();
    }
}

Salvage UserDefaultsDatabase::salvaged() const {
    Salvage result = Salvage::of(file_);
    std::set<std::string, std::less<>> deleted;
    for (const auto& erasure : result.erasures) {
        if (erasure.isDeletion) deleted.insert(erasure.key);
    }
    for (auto& [key, value] : Backup{file_}.values()) {
        if (deleted.contains(key)) continue;
        // What a damaged file has without a checksum may be half a value.
        if (!result.isProven(key)) result.sound.insert_or_assign(key, std::move(value));
    }
    return result;
}

bool UserDefaultsDatabase::writeSalvaged(const Salvage& salvage) const {
    DatabaseWriter writer{file_.salvaged()};
    for (const auto& [key, value] : salvage.damaged) {
        if (!writer.add(key, value.view())) return false;
        if (writer.table().setAside(key) != SQLITE_DONE) return false;
        if (writer.table().remove(key) != SQLITE_DONE) return false;
    }
    for (const auto& [key, value] : salvage.sound) writer.add(key, value.view());
    for (const auto& erasure : salvage.erasures) {
        if (writer.table().note(erasure.key, erasure.isDeletion) != SQLITE_DONE) return false;
    }
    return writer.finish();
}

void UserDefaultsDatabase::watch() {
    const auto pageSize = connection_.queryInteger("PRAGMA page_size");
    checkpointer_.emplace(file_.path(), pageSize.value_or(1));
    const auto told = [](void* checkpointer, sqlite3*, const char*, int pages) {
        static_cast<LogCheckpointer*>(checkpointer)->logIsNow(pages);
        return SQLITE_OK;
    };
    sqlite3_wal_hook(connection_.handle(), told, &*checkpointer_);
    housekeeper_.emplace(file_, options_.pace);
}

void UserDefaultsDatabase::close() {
    // Both wait for their connections to end, so that ours is the last.
    housekeeper_.reset();
    checkpointer_.reset();
    table_ = {};
    connection_ = {};
    identity_.reset();
    trusted_.clear();
}

}  // namespace orvu
