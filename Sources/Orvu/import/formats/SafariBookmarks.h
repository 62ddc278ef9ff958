#pragma once

#include "core/Bookmarks.h"

#include <string_view>
#include <vector>

namespace orvu {

/// The bookmarks in the property list of a file "Bookmarks.plist", in its binary form or as XML,
/// each folder in its order. None if it can't be read, or is nested more than 500 deep.
[[nodiscard]] std::vector<BookmarkStore::Entry> safariBookmarks(std::string_view bytes);

}  // namespace orvu
