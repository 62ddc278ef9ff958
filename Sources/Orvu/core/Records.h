#pragma once

#include "foundation/json/Json.h"

#include <cstddef>
#include <optional>
#include <string>
#include <utility>

namespace orvu {

/// A page can make an address of any length; longer ones, in bytes, are not stored.
constexpr std::size_t storedAddressLimit = 65'536;

[[nodiscard]] inline bool canBeStored(const Url& url) {
    return url.absoluteString().size() <= storedAddressLimit;
}

/// Reads the fields that visits and bookmarks have in common: `id`, `url`, `title`, `date`.
template <class Record>
[[nodiscard]] std::optional<Record> decodeDatedPage(const JsonValue& value) {
    auto id = value.field("id").and_then(&JsonValue::uuid);
    auto url = value.field("url").and_then(&JsonValue::url);
    const auto title = value.field("title").and_then(&JsonValue::text);
    const auto date = value.field("date").and_then(&JsonValue::date);
    if (!id || !url || !title || !date) return std::nullopt;
    return Record{*id, std::move(*url), std::string{*title}, *date};
}

/// Writes the same fields.
template <class Record>
void encodeDatedPage(JsonWriter& writer, const Record& record) {
    writer.beginObject().key("id").value(record.id).key("url").value(record.url);
    writer.key("title").value(record.title).key("date").value(record.date).endObject();
}

/// One page that finished loading.
struct Visit {
    Uuid id;
    Url url;
    std::string title;
    Date date;

    [[nodiscard]] static std::optional<Visit> decode(const JsonValue& value);
    void encode(JsonWriter& writer) const;
    friend bool operator==(const Visit&, const Visit&) = default;
};

/// One tab as the session remembers it.
struct SavedTab {
    Url url;
    bool pinned = false;
    std::optional<Uuid> group;

    [[nodiscard]] static std::optional<SavedTab> decode(const JsonValue& value);
    void encode(JsonWriter& writer) const;
    friend bool operator==(const SavedTab&, const SavedTab&) = default;
};

/// A tab on the shelf: only its address and title are left of it.
struct Parked {
    Uuid id;
    Url url;
    std::string title;

    [[nodiscard]] static std::optional<Parked> decode(const JsonValue& value);
    void encode(JsonWriter& writer) const;
    friend bool operator==(const Parked&, const Parked&) = default;
};

/// A tab that was closed. Never stored. Its identity is its own, not the tab's.
struct ClosedTab {
    Uuid id;
    Url url;
    std::string title;
    Date date;

    friend bool operator==(const ClosedTab&, const ClosedTab&) = default;
};

}  // namespace orvu
