#pragma once

#include "core/BrowserStore.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

namespace orvu {

/// What a line of the list of tabs stands for, as long as it stands there.
struct ColumnKey {
    enum class Kind { group, tab, ungroupedHeading };

    Kind kind = Kind::tab;
    Uuid id = {};  ///< of the group or the tab; nil for the heading

    friend auto operator<=>(const ColumnKey&, const ColumnKey&) = default;
};

/// One line of the list of tabs in the column.
struct ColumnItem {
    ColumnKey key;
    std::size_t count = 0;  ///< how many tabs stand in the group; only for groups

    friend bool operator==(const ColumnItem&, const ColumnItem&) = default;
};

/// The list of tabs from top to bottom: the header of each group that shows a tab and, unless it is
/// collapsed, its tabs; a heading if there is such a header and tabs in no group; those tabs. Pinned
/// tabs are not in it.
[[nodiscard]] std::vector<ColumnItem> columnItems(const BrowserStore& store);

enum class ColumnStep { next, previous };

/// The tab beside the one in front, in the order in which the column shows them, pinned ones
/// first, round and round. Tabs of collapsed groups are passed over unless there are no others.
/// Nothing if there is no other tab.
[[nodiscard]] std::shared_ptr<BrowserTab> neighbourTab(const BrowserStore& store, ColumnStep step);

}  // namespace orvu

template <>
struct std::hash<orvu::ColumnKey> {
    std::size_t operator()(const orvu::ColumnKey& key) const noexcept {
        return std::hash<orvu::Uuid>{}(key.id) ^ static_cast<std::size_t>(key.kind);
    }
};
