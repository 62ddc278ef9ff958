#include "platform/model/GgufHeader.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <map>
#include <string_view>
#include <vector>

namespace orvu {
namespace {

constexpr std::uint32_t magic = 0x46554747;        // "GGUF"
constexpr std::uint64_t factLimit = 4096;          // models have some 40
constexpr std::uint64_t tensorLimit = 65536;       // large ones have 3,000
constexpr std::uint64_t keyLimit = 65535;          // bytes, as the format says
constexpr std::uint64_t keptLimit = 4096;          // bytes of a text that is kept
constexpr std::uint64_t keptItems = 4096;          // of a list: one for each layer
constexpr std::uint64_t numberLimit = 1ULL << 32;  // a sum of such products fits

enum class Type : std::uint32_t { text = 8, list = 9 };

/// Bytes of a value of a type that is neither text nor list; 0 for no such type.
std::uint64_t sizeOfType(std::uint32_t type) {
    constexpr std::array<std::uint64_t, 13> sizes{1, 1, 2, 2, 4, 4, 4, 1, 0, 0, 8, 8, 8};
    return type < sizes.size() ? sizes[type] : 0;
}

/// Reads forward. What isn't there reads as 0 and breaks it.
class Reader {
public:
    explicit Reader(const FileBytes& file) : file_(file) {}

    [[nodiscard]] bool isBroken() const { return isBroken_; }
    [[nodiscard]] std::uint64_t place() const { return place_; }
    [[nodiscard]] std::uint64_t left() const { return file_.size - place_; }
    bool fail() {
        isBroken_ = true;
        return false;
    }

    template <class Number>
    Number number() {
        Number value{};
        take({reinterpret_cast<char*>(&value), sizeof(value)});
        return isBroken_ ? Number{} : value;
    }
    /// A text's first `kept` bytes; the others are passed over.
    std::string text(std::uint64_t kept, std::uint64_t most) {
        const auto length = number<std::uint64_t>();
        if (isBroken_ || length > most || length > left()) return fail(), "";
        std::string text(std::min(length, kept), '\0');
        take(text);
        skip(length - text.size());
        return text;
    }
    void skip(std::uint64_t bytes) {
        if (isBroken_ || bytes > left()) {
            fail();
            return;
        }
        place_ += bytes;
    }

private:
    void take(std::span<char> target) {
        if (isBroken_ || target.size() > left()) {
            fail();
            return;
        }
        while (!target.empty()) {
            if (place_ < begin_ || place_ - begin_ >= filled_) refill();
            if (isBroken_) return;
            const auto from = static_cast<std::size_t>(place_ - begin_);
            const auto count = std::min(target.size(), filled_ - from);
            std::copy_n(buffer_.begin() + static_cast<std::ptrdiff_t>(from), count, target.begin());
            target = target.subspan(count);
            place_ += count;
        }
    }
    void refill() {
        begin_ = place_;
        filled_ = file_.read(place_, buffer_);
        if (filled_ == 0 || filled_ > buffer_.size()) fail();
    }

    const FileBytes& file_;
    std::uint64_t place_ = 0;
    std::uint64_t begin_ = 0;  ///< of what the buffer holds
    std::size_t filled_ = 0;
    bool isBroken_ = false;
    std::vector<char> buffer_ = std::vector<char>(65536);
};

/// The few values that are kept, by their keys.
struct Facts {
    std::map<std::string, std::string, std::less<>> texts;
    std::map<std::string, std::vector<std::uint64_t>, std::less<>> numbers;

    [[nodiscard]] std::string text(std::string_view key) const {
        const auto at = texts.find(key);
        return at == texts.end() ? "" : at->second;
    }
    [[nodiscard]] std::uint64_t number(std::string_view key) const {
        const auto at = numbers.find(key);
        return at == numbers.end() || at->second.empty() ? 0 : at->second.front();
    }
};

/// A whole number of any width; 0 for what is none or is negative or beyond all sense.
std::uint64_t wholeNumber(Reader& reader, std::uint32_t type) {
    const auto plain = [](auto value) {
        const bool isPlain = value >= 0 && static_cast<std::uint64_t>(value) < numberLimit;
        return isPlain ? static_cast<std::uint64_t>(value) : 0;
    };
    switch (type) {
        case 0:
            return plain(reader.number<std::uint8_t>());
        case 1:
            return plain(reader.number<std::int8_t>());
        case 2:
            return plain(reader.number<std::uint16_t>());
        case 3:
            return plain(reader.number<std::int16_t>());
        case 4:
            return plain(reader.number<std::uint32_t>());
        case 5:
            return plain(reader.number<std::int32_t>());
        case 10:
            return plain(reader.number<std::uint64_t>());
        case 11:
            return plain(reader.number<std::int64_t>());
        default:
            reader.skip(sizeOfType(type));
            return 0;
    }
}

bool readList(Reader& reader, const std::string& key, Facts& facts) {
    const auto type = reader.number<std::uint32_t>();
    const auto count = reader.number<std::uint64_t>();
    if (reader.isBroken() || count > reader.left()) return reader.fail();
    if (type == static_cast<std::uint32_t>(Type::text)) {
        for (std::uint64_t i = 0; i < count && !reader.isBroken(); ++i) {
            static_cast<void>(reader.text(0, reader.left()));
        }
        return !reader.isBroken();
    }
    const auto size = sizeOfType(type);
    if (size == 0) return reader.fail();
    if (count > keptItems) {
        reader.skip(count * size);  // fits: there are that many bytes, and sizes are small
        return !reader.isBroken();
    }
    auto& numbers = facts.numbers[key];
    for (std::uint64_t i = 0; i < count; ++i) numbers.push_back(wholeNumber(reader, type));
    return !reader.isBroken();
}

bool readFact(Reader& reader, Facts& facts) {
    const std::string key = reader.text(keyLimit, keyLimit);
    const auto type = reader.number<std::uint32_t>();
    if (reader.isBroken() || facts.texts.contains(key) || facts.numbers.contains(key)) {
        return reader.fail();
    }
    if (type == static_cast<std::uint32_t>(Type::list)) return readList(reader, key, facts);
    if (type == static_cast<std::uint32_t>(Type::text)) {
        facts.texts[key] = reader.text(keptLimit, reader.left());
    } else if (sizeOfType(type) == 0) {
        return reader.fail();
    } else {
        facts.numbers[key] = {wholeNumber(reader, type)};
    }
    return !reader.isBroken();
}

/// Passes the list of tensors, of which the last must begin within the file.
bool readTensors(Reader& reader, std::uint64_t count) {
    std::uint64_t farthest = 0;
    for (std::uint64_t i = 0; i < count && !reader.isBroken(); ++i) {
        constexpr std::uint64_t nameLimit = 64;
        constexpr std::uint32_t dimensionLimit = 4;
        static_cast<void>(reader.text(0, nameLimit));
        const auto dimensions = reader.number<std::uint32_t>();
        if (dimensions > dimensionLimit) return reader.fail();
        reader.skip(dimensions * sizeof(std::uint64_t) + sizeof(std::uint32_t));
        farthest = std::max(farthest, reader.number<std::uint64_t>());
    }
    return !reader.isBroken() && (count == 0 || farthest < reader.left());
}

/// As the engine makes contexts: a key and a value of 16 bits each for all heads of a layer that
/// are shared.
std::uint64_t contextBytesOf(const Facts& facts, const std::string& architecture) {
    const auto of = [&](std::string_view key) { return architecture + "." + std::string{key}; };
    constexpr std::uint64_t layerLimit = 4096;
    const auto layers = std::min(facts.number(of("block_count")), layerLimit);
    const auto heads = std::max<std::uint64_t>(facts.number(of("attention.head_count")), 1);
    const auto usual = facts.number(of("embedding_length")) / heads;
    const auto length = [&](std::string_view key) {
        const auto own = facts.number(of(key));
        return std::min<std::uint64_t>(own != 0 ? own : usual, 1U << 16);
    };
    const auto each = 2 * (length("attention.key_length") + length("attention.value_length"));
    const auto shared = facts.numbers.find(of("attention.head_count_kv"));
    if (shared == facts.numbers.end() || shared->second.empty()) return layers * heads * each;
    std::uint64_t sum = 0;
    for (std::uint64_t layer = 0; layer < layers; ++layer) {
        const auto& list = shared->second;
        sum += std::min<std::uint64_t>(list[std::min<std::uint64_t>(layer, list.size() - 1)],
                                       1U << 16);
    }
    return sum * each;
}

}  // namespace

std::optional<GgufHeader> GgufHeader::read(const FileBytes& file) {
    Reader reader{file};
    const bool isGguf = reader.number<std::uint32_t>() == magic;
    const auto version = reader.number<std::uint32_t>();
    const auto tensors = reader.number<std::uint64_t>();
    const auto count = reader.number<std::uint64_t>();
    if (!isGguf || version < 2 || version > 3 || tensors > tensorLimit || count > factLimit) {
        return std::nullopt;
    }
    Facts facts;
    for (std::uint64_t i = 0; i < count; ++i) {
        if (!readFact(reader, facts)) return std::nullopt;
    }
    if (!readTensors(reader, tensors)) return std::nullopt;
    GgufHeader header{.architecture = facts.text("general.architecture"),
                      .name = facts.text("general.name"),
                      .type = facts.text("general.type"),
                      .hasChatTemplate = !facts.text("tokenizer.chat_template").empty(),
                      .isPart = facts.number("split.count") > 1};
    header.contextTokens = facts.number(header.architecture + ".context_length");
    header.contextBytes = contextBytesOf(facts, header.architecture);
    return header;
}

bool GgufHeader::isOfChatModel() const {
    return hasChatTemplate && !isPart && !architecture.empty() && (type.empty() || type == "model");
}

}  // namespace orvu
