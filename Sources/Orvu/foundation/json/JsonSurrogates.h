#pragma once

#include <string>

namespace orvu {

/// The JSON text `json`, in which each escape of half a character, such as "\ud83d" alone, has
/// become that of U+FFFD. Pages can make such halves by cutting their texts, and no reader of JSON
/// has a character for them. Nothing else changes, the length included.
[[nodiscard]] std::string withLoneSurrogatesReplaced(std::string json);

}  // namespace orvu
