#pragma once

#include "core/Bookmarks.h"

#include <string_view>
#include <vector>

namespace orvu {

/// The bookmarks in a file that a browser exported: each link to a web page whose text holds no
/// other tag, in the order in which they stand. Of entities, "&amp;" in titles alone is decoded.
/// None if the text is no UTF-8. It takes time in proportion to the text, whatever stands in it.
[[nodiscard]] std::vector<BookmarkStore::Entry> bookmarksInHtml(std::string_view html);

}  // namespace orvu
