#include "platform/linux/defaults/StoredValue.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

namespace orvu {
namespace {

/// Sums up bytes, eight at a time. Each step maps different states, and different words, to
/// different states. Four sums go side by side, for the machine has to wait for each product.
class Sum {
public:
    void add(std::string_view bytes) {
        add(bytes.size());
        const std::size_t round = lanes_.size() * wordSize;
        for (; bytes.size() >= round; bytes.remove_prefix(round)) {
            for (std::size_t lane = 0; lane < lanes_.size(); ++lane) {
                lanes_[lane] = mixed(lanes_[lane] ^ word(bytes.data() + lane * wordSize, wordSize));
            }
        }
        while (!bytes.empty()) {
            const auto count = std::min(bytes.size(), wordSize);
            add(word(bytes.data(), count));
            bytes.remove_prefix(count);
        }
    }
    void add(std::uint64_t word) { lanes_[0] = mixed(lanes_[0] ^ word); }

    [[nodiscard]] std::uint64_t result() const {
        std::uint64_t sum = 0;
        for (const auto lane : lanes_) sum = mixed(sum ^ lane);
        return sum;
    }

private:
    static constexpr std::size_t wordSize = sizeof(std::uint64_t);

    static std::uint64_t mixed(std::uint64_t state) {
        constexpr std::uint64_t oddFactor = 0x9E3779B97F4A7C15;
        state *= oddFactor;
        return state ^ state >> 32U;
    }
    static std::uint64_t word(const char* bytes, std::size_t count) {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes, count);
        if constexpr (std::endian::native == std::endian::big) word = std::byteswap(word);
        return word;
    }

    std::array<std::uint64_t, 4> lanes_{1, 2, 3, 4};
};

/// How many bytes two texts have in common from their beginning on. Compared in blocks, since a
/// history has a million.
std::size_t commonPrefix(std::string_view one, std::string_view other) {
    constexpr std::size_t block = 4096;
    const auto size = std::min(one.size(), other.size());
    std::size_t same = 0;
    while (same + block <= size && std::memcmp(&one[same], &other[same], block) == 0) same += block;
    while (same < size && one[same] == other[same]) ++same;
    return same;
}

/// Whether something was put in at one place, and nothing else was changed.
bool isInsertion(std::string_view previous, std::string_view next) {
    if (next.size() < previous.size()) return false;
    const auto prefix = commonPrefix(previous, next);
    return next.ends_with(previous.substr(prefix));
}

/// Whether a list lost entries at its beginning and won others at its end.
bool hasMovedOn(std::string_view previous, std::string_view next) {
    constexpr std::size_t enoughToFind = 48;  // more than an identifier takes
    if (previous.size() < enoughToFind || next.size() < enoughToFind) return false;
    const auto entries = next.substr(1);  // behind the bracket
    const auto start = previous.find(entries.substr(0, enoughToFind), 1);
    if (start == std::string_view::npos) return false;
    const auto kept = previous.substr(start, previous.size() - start - 1);
    return entries.size() > kept.size() + 1 && entries.starts_with(kept);
}

}  // namespace

ValueView ValueView::of(const SqliteStatement::Turn& row, int column) {
    switch (row.type(column)) {
        case SQLITE_TEXT:
            return ofText(row.bytes(column));
        case SQLITE_BLOB:
            return ofData(row.bytes(column));
        case SQLITE_INTEGER:
            return ofInteger(row.integer(column));
        case SQLITE_FLOAT:
            return ofReal(row.real(column));
        default:
            return {};
    }
}

void ValueView::bind(SqliteStatement::Turn& turn, int parameter) const {
    switch (type) {
        case SQLITE_TEXT:
            return turn.bindText(parameter, bytes);
        case SQLITE_BLOB:
            return turn.bindBlob(parameter, bytes);
        case SQLITE_INTEGER:
            return turn.bindInteger(parameter, integer);
        case SQLITE_FLOAT:
            return turn.bindReal(parameter, real);
        default:
            return turn.bindNull(parameter);
    }
}

std::int64_t ValueView::checksum(std::string_view key) const {
    Sum sum;
    sum.add(key);
    sum.add(static_cast<std::uint64_t>(type));
    sum.add(bytes);
    sum.add(static_cast<std::uint64_t>(integer));
    // The database may forget the sign of zero.
    sum.add(std::bit_cast<std::uint64_t>(real == 0 ? 0.0 : real));
    return static_cast<std::int64_t>(sum.result());
}

bool ValueView::extends(const ValueView& previous) const {
    if (previous.bytes.empty()) return true;
    return previous.type == type && isInsertion(previous.bytes, bytes);
}

bool ValueView::loses(const ValueView& previous) const {
    if (extends(previous)) return false;
    return previous.type != type || !hasMovedOn(previous.bytes, bytes);
}

bool ValueView::isEmpty() const {
    return type == SQLITE_NULL ||
           (type == SQLITE_BLOB && (bytes.empty() || bytes == "[]" || bytes == "{}"));
}

}  // namespace orvu
