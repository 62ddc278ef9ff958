#pragma once

#include "foundation/FoldedText.h"
#include "foundation/Url.h"

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <vector>

namespace orvu {

/// What was searched for, read out of the addresses of a history, oldest first. Each address
/// counts as a place, whether it is that of a results page or not.
class PastSearches {
public:
    struct Search {
        std::string text;
        FoldedText folded;
    };

    /// Gives the search that `url` turned out to be; null for all other pages.
    const Search* append(const Url& url);
    void dropFirst(std::size_t count);
    void keepFirst(std::size_t count);

    /// The latest `limit` searches that begin with `typed` and are not all of it; each once, in
    /// its latest spelling. All begin with the empty text.
    [[nodiscard]] std::vector<Search> latest(const FoldedText& typed, std::size_t limit) const;

private:
    std::deque<std::optional<Search>> places_;
};

}  // namespace orvu
