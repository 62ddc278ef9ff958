#pragma once

#include "foundation/text/FoldedText.h"
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

    /// Puts `url` before what has the place `place` now. Gives the search that it turned out to
    /// be; null for all other pages.
    const Search* insert(std::size_t place, const Url& url);
    void erase(std::size_t place);

    /// The latest `limit` searches that begin with `typed` and are not all of it; each once, in
    /// its latest spelling. All begin with the empty text.
    [[nodiscard]] std::vector<Search> latest(const FoldedText& typed, std::size_t limit) const;

private:
    std::deque<std::optional<Search>> places_;
};

}  // namespace orvu
