#include "import/formats/GvdbFile.h"

namespace orvu {
namespace {

constexpr std::string_view signature = "GVariant";
constexpr std::size_t rootPointer = 16;  // behind the signature, a version and options
/// A table's head: the number of words of its filter, and that of its buckets.
constexpr std::size_t tableHead = 8;
/// In the upper bits of the first of these numbers stands something else.
constexpr std::uint32_t filterWords = (1U << 27) - 1;
constexpr std::size_t itemSize = 24;
/// What an item says in the place of its parent if it has none, so that its key is whole.
constexpr std::uint32_t noParent = 0xFFFFFFFF;
constexpr char tableItem = 'H';
constexpr char valueItem = 'v';

}  // namespace

// All numbers stand with their lowest byte first, whatever the byte order of the values.
std::optional<std::uint32_t> GvdbFile::number(std::size_t at) const {
    if (at > bytes_.size() || bytes_.size() - at < 4) return std::nullopt;
    std::uint32_t result = 0;
    for (std::size_t i = 4; i > 0; --i) {
        result = result << 8 | static_cast<unsigned char>(bytes_[at + i - 1]);
    }
    return result;
}

std::optional<GvdbFile::Range> GvdbFile::pointer(std::size_t at) const {
    const auto begin = number(at);
    const auto end = number(at + 4);
    if (!begin || !end || *begin > *end || *end > bytes_.size()) return std::nullopt;
    return Range{*begin, *end};
}

std::optional<GvdbFile::Range> GvdbFile::root() const {
    return bytes_.starts_with(signature) ? pointer(rootPointer) : std::nullopt;
}

std::optional<GvdbFile::Item> GvdbFile::item(std::size_t at) const {
    const auto parent = number(at + 4);
    const auto key = number(at + 8);
    const auto rest = number(at + 12);  // the key's length in two bytes, the type in one
    const auto value = pointer(at + 16);
    if (parent != noParent || !key || !rest || !value) return std::nullopt;
    const std::size_t length = *rest & 0xFFFF;
    if (*key > bytes_.size() || bytes_.size() - *key < length) return std::nullopt;
    return Item{bytes_.substr(*key, length), static_cast<char>(*rest >> 16 & 0xFF), *value};
}

std::vector<GvdbFile::Item> GvdbFile::items(Range table) const {
    const auto words = number(table.begin);
    const auto buckets = number(table.begin + 4);
    if (!words || !buckets) return {};
    std::vector<Item> result;
    // Each item has its own bytes. A file in which many tell the same ones would grow as it is read.
    std::size_t left = bytes_.size();
    const std::size_t lists = 4 * (std::size_t{*words & filterWords} + *buckets);
    for (std::size_t at = table.begin + tableHead + lists; at + itemSize <= table.end;
         at += itemSize) {
        const auto found = item(at);
        if (!found) continue;
        const std::size_t size = found->key.size() + (found->value.end - found->value.begin);
        if (size > left) return {};
        left -= size;
        result.push_back(*found);
    }
    return result;
}

std::optional<GvdbFile::Value> GvdbFile::value(Range range) const {
    const auto framed = bytes_.substr(range.begin, range.end - range.begin);
    const auto zero = framed.rfind('\0');
    if (zero == std::string_view::npos) return std::nullopt;
    return Value{framed.substr(0, zero), framed.substr(zero + 1)};
}

GvdbFile::Values GvdbFile::valuesOf(std::string_view name) const {
    Values result;
    const auto top = root();
    if (!top) return result;
    for (const Item& table : items(*top)) {
        if (table.key != name || table.type != tableItem) continue;
        for (const Item& entry : items(table.value)) {
            const auto found = entry.type == valueItem ? value(entry.value) : std::nullopt;
            if (found) result.emplace_back(entry.key, *found);
        }
        break;
    }
    return result;
}

}  // namespace orvu
