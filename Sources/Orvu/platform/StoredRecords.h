#pragma once

#include "foundation/json/Json.h"
#include "platform/UserDefaults.h"

#include <optional>
#include <string_view>
#include <vector>

namespace orvu {

/// The records stored under `key`; nothing if there are none, or if one of them does not decode.
/// Then what is stored is not lost with the next write, but set aside.
template <class Record>
[[nodiscard]] std::optional<std::vector<Record>> readRecords(UserDefaults& defaults,
                                                             std::string_view key) {
    const auto stored = defaults.data(key);
    auto records = stored ? decodeRecords<Record>(*stored) : std::nullopt;
    if (!records && defaults.hasObject(key)) defaults.setAside(key);
    return records;
}

/// Stores `records` in the place of what stands under `key`; does nothing if one of them can't be
/// written.
template <class Record>
void writeRecords(UserDefaults& defaults, std::string_view key,
                  const std::vector<Record>& records) {
    if (const auto text = encodeRecords(records)) defaults.setData(key, *text);
}

}  // namespace orvu
