#pragma once

#include "foundation/Url.h"

#include <optional>

namespace orvu {

/// Which addresses pages may lead to. The gate stands in the seam: tabs and stores never hear of
/// what it refuses.
struct NavigationGate {
    /// Whether the engine can load an address at all. Others are refused before it starts a process
    /// for them only to find that out, which a page could make it do without end.
    [[nodiscard]] static bool canLoad(const Url& url);

    /// Whether a page at `page` may have `target` opened in a tab: pages of the web and the blank
    /// one; a file by a page that is a file itself; a blob of the page's own origin. Never what runs
    /// in another page's place or belongs to the engine: data, javascript, webkit and the like.
    [[nodiscard]] static bool mayOpenElsewhere(const Url& target, const std::optional<Url>& page);
};

}  // namespace orvu
