#pragma once

#include <cstddef>
#include <string_view>

namespace orvu {

/// What keeps private texts from being sent to a search engine while they are being typed.
class SuggestionGate {
public:
    /// In characters; a longer text is rather a letter than a search.
    static constexpr std::size_t maxQueryLength = 120;
    /// In bytes, for a single character may have any number of them.
    static constexpr std::size_t maxBytes = 8192;

    /// Whether `query`, which is trimmed, may be sent. Never if it is empty or too long, holds an
    /// e-mail address or a long number such as that of a card, or is an address of the web.
    [[nodiscard]] static bool allows(std::string_view query);
};

}  // namespace orvu
