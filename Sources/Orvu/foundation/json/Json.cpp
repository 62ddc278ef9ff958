#include "foundation/json/Json.h"

#include "foundation/text/Text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace orvu {
namespace {

/// Whether no byte of `text` needs an escape, as in nearly all texts.
bool isPlain(std::string_view text) {
    // Without a way out in the middle, so that the compiler takes many bytes at a time.
    unsigned char found = 0;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        found |= static_cast<unsigned char>((byte < 0x20) | (byte == '"') | (byte == '\\'));
    }
    return found == 0;
}

}  // namespace

std::optional<std::string_view> JsonValue::text() const {
    std::string_view result;
    if (element_.get_string().get(result) != simdjson::SUCCESS) return std::nullopt;
    return result;
}

std::optional<double> JsonValue::number() const {
    double result = 0;
    if (element_.get_double().get(result) != simdjson::SUCCESS) return std::nullopt;
    return result;
}

std::optional<std::int64_t> JsonValue::integer() const {
    std::int64_t result = 0;
    if (element_.get_int64().get(result) == simdjson::SUCCESS) return result;
    double real = 0;
    if (!element_.is_double() || element_.get_double().get(real) != simdjson::SUCCESS) {
        return std::nullopt;
    }
    constexpr double limit = 9223372036854775808.0;  // 2^63
    if (std::trunc(real) != real || real < -limit || real >= limit) return std::nullopt;
    return static_cast<std::int64_t>(real);
}

std::optional<bool> JsonValue::boolean() const {
    bool result = false;
    if (element_.get_bool().get(result) != simdjson::SUCCESS) return std::nullopt;
    return result;
}

std::optional<Uuid> JsonValue::uuid() const {
    const auto written = text();
    return written ? Uuid::parse(*written) : std::nullopt;
}

std::optional<Url> JsonValue::url() const {
    const auto written = text();
    return written ? Url::parse(*written) : std::nullopt;
}

std::optional<Date> JsonValue::date() const {
    const auto seconds = number();
    return seconds ? std::optional{Date{*seconds}} : std::nullopt;
}

std::optional<std::vector<JsonValue>> JsonValue::array() const {
    simdjson::dom::array entries;
    if (element_.get_array().get(entries) != simdjson::SUCCESS) return std::nullopt;
    std::vector<JsonValue> result;
    result.reserve(entries.size());
    for (const auto entry : entries) result.emplace_back(entry);
    return result;
}

std::optional<std::vector<std::string_view>> JsonValue::texts() const {
    simdjson::dom::array entries;
    if (element_.get_array().get(entries) != simdjson::SUCCESS) return std::nullopt;
    std::vector<std::string_view> result;
    result.reserve(entries.size());
    for (const auto entry : entries) {
        const auto text = JsonValue{entry}.text();
        if (!text) return std::nullopt;
        result.push_back(*text);
    }
    return result;
}

std::optional<JsonValue> JsonValue::field(std::string_view name) const {
    simdjson::dom::element found;
    if (element_.at_key(name).get(found) != simdjson::SUCCESS) return std::nullopt;
    if (found.is_null()) return std::nullopt;
    return JsonValue{found};
}

std::optional<std::vector<std::pair<std::string_view, JsonValue>>> JsonValue::fields() const {
    simdjson::dom::object entries;
    if (element_.get_object().get(entries) != simdjson::SUCCESS) return std::nullopt;
    std::vector<std::pair<std::string_view, JsonValue>> result;
    for (const auto entry : entries) result.emplace_back(entry.key, JsonValue{entry.value});
    return result;
}

std::optional<JsonDocument> JsonDocument::parse(std::string_view text) {
    if (text.empty()) return std::nullopt;  // the library takes no null pointer
    auto parser = std::make_unique<simdjson::dom::parser>();
    simdjson::dom::element root;
    if (parser->parse(text.data(), text.size()).get(root) != simdjson::SUCCESS) {
        return std::nullopt;
    }
    return JsonDocument{std::move(parser), root};
}

JsonWriter& JsonWriter::key(std::string_view name) {
    separate();
    quoteWellFormed(name);
    text_.push_back(':');
    needsComma_ = false;
    return *this;
}

JsonWriter& JsonWriter::value(std::string_view text) {
    separate();
    quoteWellFormed(text);
    needsComma_ = true;
    return *this;
}

JsonWriter& JsonWriter::value(std::int64_t number) {
    separate();
    std::array<char, 24> digits{};
    const auto end = std::to_chars(digits.begin(), digits.end(), number).ptr;
    text_.append(digits.begin(), end);
    needsComma_ = true;
    return *this;
}

JsonWriter& JsonWriter::value(bool flag) {
    separate();
    text_.append(flag ? "true" : "false");
    needsComma_ = true;
    return *this;
}

JsonWriter& JsonWriter::value(double number) {
    separate();
    std::array<char, 32> digits{};
    if (!std::isfinite(number)) failed_ = true;
    // Written with all its digits, a large number would look like an integer, and one of more
    // than 64 bits makes the whole document unreadable.
    const auto end =
        std::abs(number) < 1e15
            ? std::to_chars(digits.begin(), digits.end(), number).ptr
            : std::to_chars(digits.begin(), digits.end(), number, std::chars_format::scientific)
                  .ptr;
    text_.append(digits.begin(), end);
    needsComma_ = true;
    return *this;
}

JsonWriter& JsonWriter::value(const Uuid& id) {
    separate();
    text_.append(1, '"').append(id.string()).append(1, '"');
    needsComma_ = true;
    return *this;
}

std::optional<std::string> JsonWriter::finish() && {
    if (failed_) return std::nullopt;
    return std::move(text_);
}

JsonWriter& JsonWriter::open(char bracket) {
    separate();
    text_.push_back(bracket);
    needsComma_ = false;
    return *this;
}

JsonWriter& JsonWriter::close(char bracket) {
    text_.push_back(bracket);
    needsComma_ = true;
    return *this;
}

void JsonWriter::separate() {
    if (needsComma_) text_.push_back(',');
}

void JsonWriter::quoteWellFormed(std::string_view text) {
    if (isWellFormed(text)) {
        quote(text);
    } else {
        quote(wellFormed(text));
    }
}

void JsonWriter::quote(std::string_view text) {
    constexpr std::string_view digits = "0123456789abcdef";
    const auto needsEscape = [](char c) {
        return c == '"' || c == '\\' || static_cast<unsigned char>(c) < 0x20;
    };
    text_.push_back('"');
    if (isPlain(text)) {
        text_.append(text);
        text = {};
    }
    while (!text.empty()) {
        const auto stop = std::ranges::find_if(text, needsEscape);
        const auto plain = static_cast<std::size_t>(stop - text.begin());
        text_.append(text.substr(0, plain));
        text.remove_prefix(plain);
        if (text.empty()) break;
        const auto byte = static_cast<unsigned char>(text[0]);
        text_.push_back('\\');
        if (byte < 0x20) {
            text_.append({'u', '0', '0', digits[byte >> 4], digits[byte & 0x0F]});
        } else {
            text_.push_back(text[0]);
        }
        text.remove_prefix(1);
    }
    text_.push_back('"');
}

}  // namespace orvu
