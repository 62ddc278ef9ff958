#pragma once

#include "core/Records.h"

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace orvu {

/// The stored form of a history: one JSON array. It is kept between two writes, so that one more
/// visit costs the encoding of this visit and not of thousands.
class EncodedVisits {
public:
    /// The whole array. It stands until the next change.
    [[nodiscard]] std::string_view text() const { return text_; }

    void assign(const std::vector<Visit>& visits);
    /// A visit that JSON has no form for, since its date is not finite, becomes a gap: it counts
    /// as an entry and is left out of the text.
    void append(const Visit& visit);
    /// Drops the oldest entries beyond `limit`.
    void keepLast(std::size_t limit);

private:
    std::string text_ = "[]";
    std::deque<std::size_t> lengths_;  ///< of each entry with the comma behind it; 0 for a gap
};

}  // namespace orvu
