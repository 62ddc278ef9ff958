#pragma once

#include "shell/column/ColumnItems.h"

#include <optional>
#include <vector>

namespace orvu {

/// One step that turns a list of lines into another.
struct ListEdit {
    enum class Kind { remove, insert, move };

    Kind kind;
    ColumnKey key;
    std::optional<ColumnKey> after;  ///< behind which line it comes to stand; nothing: first

    friend bool operator==(const ListEdit&, const ListEdit&) = default;
};

/// The steps, in the order in which they are to be taken, that make `from` into `to`: first all
/// removals, then insertions and moves from top to bottom. Lines that keep their order among
/// each other, as many as can be, are not touched. No key may stand twice in one of the lists.
[[nodiscard]] std::vector<ListEdit> listEdits(const std::vector<ColumnKey>& from,
                                              const std::vector<ColumnKey>& to);

}  // namespace orvu
