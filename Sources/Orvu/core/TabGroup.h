#pragma once

#include "foundation/Color.h"
#include "foundation/json/Json.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>

namespace orvu {

/// The looks of a group of tabs. Which tabs are in it stands in the tabs.
struct TabGroup {
    Uuid id;
    std::string name;  ///< at most 40 characters after a rename
    int color = 0;     ///< index into `groupColors`
    bool collapsed = false;

    static constexpr std::array<Color, 6> groupColors{Color::hex(0x6CF0C2), Color::hex(0x5CB2FF),
                                                      Color::hex(0xA594FF), Color::hex(0xFFB547),
                                                      Color::hex(0xFF8AD8), Color::hex(0x9CD3FF)};
    /// The index from 0 to 5 for any number: colours go round.
    [[nodiscard]] static int wrappedColor(std::int64_t number);

    /// Any stored colour is wrapped.
    [[nodiscard]] static std::optional<TabGroup> decode(const JsonValue& value);
    void encode(JsonWriter& writer) const;
    friend bool operator==(const TabGroup&, const TabGroup&) = default;
};

}  // namespace orvu
