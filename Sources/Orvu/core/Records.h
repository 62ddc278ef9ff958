#pragma once

#include "foundation/json/Json.h"

#include <optional>
#include <string>

namespace orvu {

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
