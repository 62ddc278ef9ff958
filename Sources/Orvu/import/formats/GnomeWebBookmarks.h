#pragma once

#include "core/Bookmarks.h"

#include <string_view>
#include <vector>

namespace orvu {

/// The bookmarks in a file "bookmarks.gvdb", in the order of the file, which is that of no list a
/// person has seen. Their tags are left out. None if the file is damaged.
[[nodiscard]] std::vector<BookmarkStore::Entry> gnomeWebBookmarks(std::string_view bytes);

}  // namespace orvu
