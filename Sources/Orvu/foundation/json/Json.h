#pragma once

#include "foundation/Date.h"
#include "foundation/Url.h"
#include "foundation/Uuid.h"

#include <simdjson.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orvu {

/// One value within a `JsonDocument`, which must outlive it. Each reader gives nothing if the
/// value is of another type.
class JsonValue {
public:
    explicit JsonValue(simdjson::dom::element element) : element_(element) {}

    [[nodiscard]] std::optional<std::string_view> text() const;
    [[nodiscard]] std::optional<double> number() const;
    /// An integer, or a number without a fraction such as 2.0, that fits into 64 bits.
    [[nodiscard]] std::optional<std::int64_t> integer() const;
    [[nodiscard]] std::optional<bool> boolean() const;
    [[nodiscard]] std::optional<Uuid> uuid() const;
    [[nodiscard]] std::optional<Url> url() const;
    [[nodiscard]] std::optional<Date> date() const;
    [[nodiscard]] std::optional<std::vector<JsonValue>> array() const;
    /// The texts of a list; nothing if one of its entries is no text.
    [[nodiscard]] std::optional<std::vector<std::string_view>> texts() const;
    /// The names and values of an object, in the order in which they are written.
    [[nodiscard]] std::optional<std::vector<std::pair<std::string_view, JsonValue>>> fields() const;
    [[nodiscard]] bool isObject() const { return element_.is_object(); }
    /// A field of an object; nothing if it is absent or null, or if this is no object.
    [[nodiscard]] std::optional<JsonValue> field(std::string_view name) const;

private:
    simdjson::dom::element element_;
};

/// A parsed document. Strict: what is no JSON in UTF-8, or is nested more than 1,024 levels
/// deep, gives no document at all.
class JsonDocument {
public:
    [[nodiscard]] static std::optional<JsonDocument> parse(std::string_view text);
    [[nodiscard]] JsonValue root() const { return JsonValue{root_}; }

private:
    JsonDocument(std::unique_ptr<simdjson::dom::parser> parser, simdjson::dom::element root)
        : parser_(std::move(parser)), root_(root) {}

    std::unique_ptr<simdjson::dom::parser> parser_;  // owns what `root_` points into
    simdjson::dom::element root_;
};

/// Writes compact JSON. Text that is no UTF-8 is written with U+FFFD in the place of the bad
/// bytes, so that what was written can always be read back.
class JsonWriter {
public:
    JsonWriter& beginArray() { return open('['); }
    JsonWriter& endArray() { return close(']'); }
    JsonWriter& beginObject() { return open('{'); }
    JsonWriter& endObject() { return close('}'); }
    /// The name of the value that follows.
    JsonWriter& key(std::string_view name);
    JsonWriter& value(std::string_view text);
    JsonWriter& value(const char* text) { return value(std::string_view{text}); }
    JsonWriter& value(std::int64_t number);
    JsonWriter& value(bool flag);
    /// A number that is not finite can't be written: the whole text is then refused.
    JsonWriter& value(double number);
    JsonWriter& value(const Uuid& id);
    JsonWriter& value(const Url& url) { return value(std::string_view{url.absoluteString()}); }
    JsonWriter& value(Date date) { return value(date.secondsSinceReference()); }

    /// The text written; nothing if a value could not be written.
    [[nodiscard]] std::optional<std::string> finish() &&;

private:
    JsonWriter& open(char bracket);
    JsonWriter& close(char bracket);
    void separate();
    void quoteWellFormed(std::string_view text);
    void quote(std::string_view text);

    std::string text_;
    bool needsComma_ = false;
    bool failed_ = false;
};

/// Decodes a document that is one array of records. One entry that `Record::decode` refuses
/// fails the whole document.
template <class Record>
[[nodiscard]] std::optional<std::vector<Record>> decodeRecords(std::string_view text) {
    const auto document = JsonDocument::parse(text);
    if (!document) return std::nullopt;
    const auto entries = document->root().array();
    if (!entries) return std::nullopt;
    std::vector<Record> records;
    records.reserve(entries->size());
    for (const JsonValue& entry : *entries) {
        auto record = Record::decode(entry);
        if (!record) return std::nullopt;
        records.push_back(std::move(*record));
    }
    return records;
}

/// Encodes records as one array; nothing if one of them can't be written.
template <class Records>
[[nodiscard]] std::optional<std::string> encodeRecords(const Records& records) {
    JsonWriter writer;
    writer.beginArray();
    for (const auto& record : records) record.encode(writer);
    writer.endArray();
    return std::move(writer).finish();
}

}  // namespace orvu
