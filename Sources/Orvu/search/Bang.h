#pragma once

#include "foundation/text/Translation.h"
#include "foundation/Url.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace orvu {

/// A short key typed before a search that sends the search to another site.
struct Bang {
    struct Parsed;

    std::string_view key;          ///< what is typed, with its "!", in lower case
    Phrase name;                   ///< for people
    std::string_view host;         ///< the service's bare host
    std::string_view urlTemplate;  ///< the address, with "%s" where the search goes

    static const std::array<Bang, 10> all;

    /// Reads a key, a space and a search. Nothing if `text` has another form or the key isn't
    /// in the table. The letter case of the key does not matter, that of the search is kept.
    [[nodiscard]] static std::optional<Parsed> parse(std::string_view text);
    /// The address of a search; nothing if it gives no valid one.
    [[nodiscard]] std::optional<Url> expand(std::string_view query) const;

    friend bool operator==(const Bang&, const Bang&) = default;
};

struct Bang::Parsed {
    Bang bang;
    std::string query;  ///< trimmed

    friend bool operator==(const Parsed&, const Parsed&) = default;
};

}  // namespace orvu
