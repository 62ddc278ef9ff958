#pragma once

#include "foundation/Url.h"

#include <optional>

namespace orvu {

/// Decides what happens to a page whose process crashed: it is loaded again once for each
/// address, so that a page that always crashes doesn't do so for ever.
class CrashReload {
public:
    /// Whether the page at `url`, whose process just crashed, is to be loaded again.
    [[nodiscard]] bool shouldReload(const std::optional<Url>& url) {
        if (!url || url == last_) return false;
        last_ = url;
        return true;
    }

private:
    std::optional<Url> last_;
};

}  // namespace orvu
