#include "shell/column/ListEdits.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <unordered_map>

namespace orvu {
namespace {

using Keys = std::span<const ColumnKey>;
using Positions = std::unordered_map<ColumnKey, std::size_t>;

Positions positionsIn(Keys keys) {
    Positions positions;
    positions.reserve(keys.size());
    for (std::size_t position = 0; position < keys.size(); ++position)
        positions.emplace(keys[position], position);
    return positions;
}

/// For each key of `to`, whether it belongs to a longest run of keys whose previous positions rise.
std::vector<bool> stableKeys(const Positions& previous, Keys to) {
    constexpr auto absent = static_cast<std::size_t>(-1);
    std::vector<std::size_t> positions(to.size(), absent);
    std::vector<std::size_t> before(to.size(), absent);
    std::vector<std::size_t> ends;  // of the best run of each length, as an index into `to`
    for (std::size_t index = 0; index < to.size(); ++index) {
        const auto found = previous.find(to[index]);
        if (found == previous.end()) continue;
        positions[index] = found->second;
        const auto run = std::ranges::lower_bound(ends, found->second, {},
                                                  [&](std::size_t end) { return positions[end]; });
        if (run != ends.begin()) before[index] = *std::prev(run);
        if (run == ends.end()) {
            ends.push_back(index);
        } else {
            *run = index;
        }
    }
    std::vector<bool> stable(to.size(), false);
    for (auto index = ends.empty() ? absent : ends.back(); index != absent; index = before[index]) {
        stable[index] = true;
    }
    return stable;
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
    const Positions now = positionsIn(changedTo);
    for (const auto& key : changedFrom) {
        if (!now.contains(key)) edits.push_back({ListEdit::Kind::remove, key, std::nullopt});
    }
    const Positions previous = positionsIn(changedFrom);
    const auto stable = stableKeys(previous, changedTo);
    std::optional<ColumnKey> after;
    if (head != from.begin()) after = *std::prev(head);
    for (std::size_t index = 0; index < changedTo.size(); ++index) {
        const ColumnKey& key = changedTo[index];
        if (!stable[index]) {
            const bool known = previous.contains(key);
            edits.push_back({known ? ListEdit::Kind::move : ListEdit::Kind::insert, key, after});
        }
        after = key;
    }
    return edits;
}

}  // namespace orvu
