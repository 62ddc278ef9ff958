#include "import/formats/PropertyListGuard.h"

#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

namespace orvu {
namespace {

constexpr std::string_view binaryMark = "bplist";
constexpr std::size_t headSize = 8;
constexpr std::size_t trailerSize = 32;

/// A number with its highest byte first; all bits set if it isn't there.
std::uint64_t number(std::string_view bytes, std::size_t at, std::size_t size) {
    if (at > bytes.size() || bytes.size() - at < size) return ~std::uint64_t{0};
    std::uint64_t value = 0;
    for (const char each : bytes.substr(at, size)) {
        value = value << 8U | static_cast<unsigned char>(each);
    }
    return value;
}

/// The objects of a binary list, by their numbers, as far as they hold others.
class Objects {
public:
    explicit Objects(std::string_view bytes) : bytes_(bytes) {
        if (bytes.size() < headSize + trailerSize) return;
        const std::size_t trailer = bytes.size() - trailerSize;
        offsetSize_ = number(bytes, trailer + 6, 1);
        referenceSize_ = number(bytes, trailer + 7, 1);
        const auto count = number(bytes, trailer + 8, 8);
        top_ = number(bytes, trailer + 16, 8);
        table_ = number(bytes, trailer + 24, 8);
        const bool hasSizes = isSize(offsetSize_) && isSize(referenceSize_);
        if (hasSizes && table_ < trailer && count <= (trailer - table_) / offsetSize_) {
            count_ = count;
        }
    }

    [[nodiscard]] std::size_t count() const { return count_; }
    [[nodiscard]] std::size_t top() const { return top_; }
    /// The numbers of the objects that one holds; nothing if it isn't there as a whole.
    [[nodiscard]] std::optional<std::vector<std::size_t>> heldBy(std::size_t object) const {
        const auto at = number(bytes_, table_ + object * offsetSize_, offsetSize_);
        const auto mark = number(bytes_, at, 1);
        const auto kind = mark >> 4U;
        if (kind != arrayKind && kind != setKind && kind != dictionaryKind) {
            return std::vector<std::size_t>{};
        }
        std::size_t first = at + 1;
        auto length = mark & 0xFU;
        if (length == 0xFU) {
            const std::size_t size = std::size_t{1} << (number(bytes_, first, 1) & 3U);
            length = number(bytes_, first + 1, size);
            first += 1 + size;
        }
        if (length > bytes_.size()) return std::nullopt;
        return references(first, kind == dictionaryKind ? length * 2 : length);
    }

private:
    static constexpr std::uint64_t arrayKind = 0xA;
    static constexpr std::uint64_t setKind = 0xC;
    static constexpr std::uint64_t dictionaryKind = 0xD;

    static bool isSize(std::uint64_t size) { return size >= 1 && size <= 8; }

    [[nodiscard]] std::optional<std::vector<std::size_t>> references(std::size_t first,
                                                                     std::size_t length) const {
        if (first > bytes_.size() || length > (bytes_.size() - first) / referenceSize_) {
            return std::nullopt;
        }
        std::vector<std::size_t> result;
        result.reserve(length);
        for (std::size_t i = 0; i < length; ++i) {
            result.push_back(number(bytes_, first + i * referenceSize_, referenceSize_));
            if (result.back() >= count_) return std::nullopt;
        }
        return result;
    }

    const std::string_view bytes_;
    std::uint64_t offsetSize_ = 1;
    std::uint64_t referenceSize_ = 1;
    std::size_t count_ = 0;
    std::size_t top_ = 0;
    std::size_t table_ = 0;
};

/// Goes through all that the top object holds, an object after those in it, and adds up how many
/// there are with all copies.
class Expansion {
public:
    explicit Expansion(const Objects& objects)
        : objects_(objects), sizes_(objects.count(), unseen) {}

    [[nodiscard]] bool isSmall() {
        if (objects_.top() >= objects_.count() || !enter(objects_.top())) return false;
        while (!path_.empty()) {
            if (!step()) return false;
        }
        return true;
    }

private:
    static constexpr std::size_t unseen = 0;
    static constexpr std::size_t entered = ~std::size_t{0};

    struct Place {
        std::size_t object;
        std::vector<std::size_t> held;
        std::size_t next = 0;
        std::size_t size = 1;
    };

    [[nodiscard]] bool enter(std::size_t object) {
        auto held = objects_.heldBy(object);
        references_ += held ? held->size() : 0;
        const bool isFine = held && path_.size() < PropertyListGuard::deepest &&
                            references_ <= PropertyListGuard::mostNodes;
        if (!isFine) return false;
        sizes_[object] = entered;
        path_.push_back({object, std::move(*held)});
        return true;
    }
    [[nodiscard]] bool step() {
        Place& place = path_.back();
        if (place.next == place.held.size()) {
            leave();
            return true;
        }
        const std::size_t object = place.held[place.next];
        if (sizes_[object] == entered) return false;  // it holds itself
        if (sizes_[object] == unseen) return enter(object);
        ++place.next;
        place.size += sizes_[object];
        return place.size <= PropertyListGuard::mostNodes;
    }
    void leave() {
        sizes_[path_.back().object] = path_.back().size;
        path_.pop_back();
    }

    const Objects& objects_;
    std::vector<std::size_t> sizes_;
    std::vector<Place> path_;
    std::size_t references_ = 0;
};

/// Whether a list as XML is nested deeper than it may be. A mark within another, and text that would
/// hide one, are nothing that a browser writes: with them nobody can tell.
bool isTooDeep(std::string_view xml) {
    std::size_t open = 0;
    for (auto at = xml.find('<'); at != std::string_view::npos; at = xml.find('<', at)) {
        const auto end = xml.find('>', at);
        if (end == std::string_view::npos) return false;  // the library takes none of it
        const auto mark = xml.substr(at + 1, end - at - 1);
        at = end;
        const bool hides = mark.starts_with("!--") || mark.starts_with("![");
        if (hides || mark.find('<') != std::string_view::npos) return true;
        const bool isEnd = mark.starts_with("/dict") || mark.starts_with("/array");
        if (isEnd && open > 0) --open;
        const bool isHolder = mark.starts_with("dict") || mark.starts_with("array");
        if (isHolder && !mark.ends_with('/') && ++open > PropertyListGuard::deepest) return true;
    }
    return false;
}

}  // namespace

bool PropertyListGuard::allows(std::string_view bytes) {
    if (!bytes.starts_with(binaryMark)) return !isTooDeep(bytes);
    const Objects objects{bytes};
    return Expansion{objects}.isSmall();
}

}  // namespace orvu
