#pragma once

#include "core/Records.h"
#include "foundation/text/FoldedText.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace orvu {

/// The texts of visits, prepared once for many searches, since to lower-case and compose them at
/// each key would take longer than all the rest.
class FoldedVisits {
public:
    /// Takes what is to be searched. Only the texts of visits that are new here are prepared.
    void take(const std::vector<Visit>& visits);
    /// The places, from first to last, of those whose title or address holds `query` in any case
    /// of letters; all of them for the empty text. Titles are compared by whole characters.
    [[nodiscard]] std::vector<std::size_t> matching(std::string_view query) const;

private:
    struct Texts {
        Uuid id;
        FoldedText title;
        std::string address;
    };

    [[nodiscard]] static Texts textsOf(const Visit& visit);

    std::vector<Texts> all_;
    std::size_t longest_ = 0;  ///< no text has more bytes
};

}  // namespace orvu
