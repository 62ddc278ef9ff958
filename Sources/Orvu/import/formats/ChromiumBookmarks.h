#pragma once

#include "core/Bookmarks.h"

#include <string_view>
#include <vector>

namespace orvu {

/// The bookmarks in the JSON of a file "Bookmarks": those of the bar, the others, those of the
/// phone, each folder in its order. None if it can't be read as a whole, which is so too where
/// folders are nested more than some 500 deep.
[[nodiscard]] std::vector<BookmarkStore::Entry> chromiumBookmarks(std::string_view json);

}  // namespace orvu
