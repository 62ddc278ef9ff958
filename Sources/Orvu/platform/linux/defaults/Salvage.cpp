#include "platform/linux/defaults/Salvage.h"

#include "platform/linux/files/FileText.h"

#include <algorithm>
#include <set>
#include <system_error>

namespace orvu {
namespace {

/// Beyond this, a file whose start is damaged is not read into memory.
constexpr std::uintmax_t mostRead = 256 << 20;

std::string contents(const std::filesystem::path& path) {
    std::error_code failure;
    const auto size = std::filesystem::file_size(path, failure);
    if (failure || size > mostRead) return {};
    return fileText(path).value_or("");
}

void putBigEndian(std::string& bytes, std::size_t at, std::size_t number) {
    for (std::size_t place = 4; place-- > 0; number >>= 8U) {
        bytes[at + place] = static_cast<char>(number & 0xFFU);
    }
}

/// A new database without values, as the bytes of its file.
std::string emptyDatabase() {
    SqliteConnection connection{SqliteConnection::memory, SqliteConnection::Access::create};
    connection.execute("PRAGMA page_size=32768");
    if (DefaultsTable{connection}.create() != SQLITE_OK) return {};
    return connection.serialized();
}

/// The numbers of the rows. A scan ends at a damaged page, so there is one from each end. They
/// read row numbers alone: a value whose own pages are damaged then costs only that value.
bool findRows(SqliteConnection& source, std::set<std::int64_t>& numbers) {
    for (const auto* const order : {"ASC", "DESC"}) {
        auto scan = source.prepare("SELECT rowid FROM defaults NOT INDEXED ORDER BY rowid " +
                                   std::string{order});
        if (!scan) return false;
        SqliteStatement::Turn row{scan};
        int code = row.step();
        for (; code == SQLITE_ROW; code = row.step()) {
            if (!numbers.insert(row.integer(0)).second) break;
        }
        if (code == SQLITE_DONE) return true;
    }
    return false;
}

}  // namespace

Salvage Salvage::of(const DatabaseFile& file) {
    using Access = SqliteConnection::Access;
    Salvage result;
    if (!file.hasContent()) return result;
    for (const auto access : {Access::readOnly, Access::immutable}) {
        SqliteConnection source{file.path(), access};
        source.keepLogAtClose();
        // Reads on where the file is shorter than it says, or has tables that make no sense.
        source.execute("PRAGMA writable_schema=ON");
        const auto version = source.queryInteger("PRAGMA user_version");
        if (!version) continue;
        if (*version > DefaultsTable::schemaVersion) return result;
        result.readAll(source);
        break;
    }
    if (!result.isComplete) result.readBehindBadStart(file);
    return result;
}

bool Salvage::isProven(std::string_view key) const {
    const auto found = isProven_.find(key);
    return found != isProven_.end() && found->second;
}

void Salvage::readAll(SqliteConnection& source) {
    isComplete = readRows(source, Trust::all) && damaged.empty();
    DefaultsTable table{source};
    erasures = table.erasures();
}

// A file of this program differs from an empty one in its values alone: its first page says the
// same, and both trees of the table begin on the same pages. So where that page is damaged, another
// takes its place. The log is not read here.
void Salvage::readBehindBadStart(const DatabaseFile& file) {
    constexpr std::size_t pageSize = 32768;
    constexpr std::size_t pageCountAt = 28;
    std::string bytes = contents(file.path());
    const std::string start = emptyDatabase().substr(0, pageSize);
    if (bytes.size() < pageSize || start.size() < pageSize) return;
    bytes.resize((bytes.size() + pageSize - 1) / pageSize * pageSize);
    bytes.replace(0, pageSize, start);
    putBigEndian(bytes, pageCountAt, bytes.size() / pageSize);

    SqliteConnection source{SqliteConnection::memory, SqliteConnection::Access::create};
    if (!source.deserialize(bytes)) return;
    source.execute("PRAGMA writable_schema=ON");
    // Without its own first page there is no telling whose file it is, but for the checksums.
    readRows(source, Trust::provenAlone);
}

bool Salvage::readRows(SqliteConnection& source, Trust trust) {
    std::set<std::int64_t> numbers;
    bool areAllRead = findRows(source, numbers);
    auto select = source.prepare("SELECT key, value, checksum FROM defaults WHERE rowid = ?1");
    if (!select) select = source.prepare("SELECT key, value, NULL FROM defaults WHERE rowid = ?1");
    for (const auto number : numbers) {
        SqliteStatement::Turn row{select};
        row.bindInteger(1, number);
        if (row.step() == SQLITE_ROW && row.type(0) == SQLITE_TEXT) {
            take(row, trust);
        } else {
            areAllRead = false;
        }
    }
    for (const auto& [key, value] : sound) damaged.erase(key);
    return areAllRead;
}

void Salvage::take(const SqliteStatement::Turn& row, Trust trust) {
    const std::string key{row.bytes(0)};
    const auto value = ValueView::of(row, 1);
    if (value.type == SQLITE_NULL) return;
    const bool hasChecksum = row.type(2) == SQLITE_INTEGER;
    const bool isRight = hasChecksum && row.integer(2) == value.checksum(key);
    if (hasChecksum && !isRight) {
        if (trust == Trust::all) damaged.try_emplace(key, value);
        return;
    }
    if (!isRight && trust == Trust::provenAlone) return;
    if (const auto known = isProven_.find(key); known != isProven_.end() && known->second) return;
    if (!isRight && isProven_.contains(key)) return;
    isProven_[key] = isRight;
    sound.insert_or_assign(key, StoredValue{value});
}

}  // namespace orvu
