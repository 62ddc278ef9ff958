#include "shell/column/ListEdits.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <unordered_map>

namespace orvu {
namespace {

using Keys = std::span<const ColumnKey>;
using Places = std::unordered_map<ColumnKey, std::size_t>;

Places placesIn(Keys keys) {
    Places places;
    places.reserve(keys.size());
    for (std::size_t place = 0; place < keys.size(); ++place) places.emplace(keys[place], place);
    return places;
}

/// For each key of `to`, whether it belongs to a longest run of keys whose previous places rise.
std::vector<bool> stableKeys(const Places& previous, Keys to) {
    constexpr auto none = static_cast<std::size_t>(-1);
    std::vector<std::size_t> places(to.size(), none);
    std::vector<std::size_t> before(to.size(), none);
    std::vector<std::size_t> ends;  // of the best run of each length, as an index into `to`
    for (std::size_t index = 0; index < to.size(); ++index) {
        const auto found = previous.find(to[index]);
        if (found == previous.end()) continue;
        places[index] = found->second;
        const auto run = std::ranges::lower_bound(ends, found->second, {},
                                                  [&](std::size_t end) { return places[end]; });
        if (run != ends.begin()) before[index] = *std::prev(run);
        if (run == ends.end()) {
            ends.push_back(index);
        } else {
            *run = index;
        }
    }
    std::vector<bool> still(to.size(), false);
    for (auto index = ends.empty() ? none : ends.back(); index != none; index = before[index]) {
        still[index] = true;
    }
    return still;
}

}  // namespace

std::vector<ListEdit> listEdits(const std::vector<ColumnKey>& from,
                                const std::vector<ColumnKey>& to) {
    // Most changes touch one line: what is the same at both ends needs no looking up.
    const auto [head, newHead] = std::ranges::mismatch(from, to);
    Keys changedFrom{head, from.end()};
    Keys changedTo{newHead, to.end()};
    while (!changedFrom.empty() && !changedTo.empty() && changedFrom.back() == changedTo.back()) {
        changedFrom = changedFrom.first(changedFrom.size() - 1);
        changedTo = changedTo.first(changedTo.size() - 1);
    }

    std::vector<ListEdit> edits;
    const Places now = placesIn(changedTo);
    for (const auto& key : changedFrom) {
        if (!now.contains(key)) edits.push_back({ListEdit::Kind::remove, key, std::nullopt});
    }
    const Places previous = placesIn(changedFrom);
    const auto still = stableKeys(previous, changedTo);
    std::optional<ColumnKey> after;
    if (head != from.begin()) after = *std::prev(head);
    for (std::size_t index = 0; index < changedTo.size(); ++index) {
        const ColumnKey& key = changedTo[index];
        if (!still[index]) {
            const bool known = previous.contains(key);
            edits.push_back({known ? ListEdit::Kind::move : ListEdit::Kind::insert, key, after});
        }
        after = key;
    }
    return edits;
}

}  // namespace orvu
