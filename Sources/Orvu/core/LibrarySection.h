#pragma once

namespace orvu {

/// The lists of a window's library, in the order in which they are offered.
enum class LibrarySection { history, bookmarks, closed };

}  // namespace orvu
