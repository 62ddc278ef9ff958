#pragma once

#include "core/Records.h"
#include "foundation/text/Translation.h"
#include "notch/AddressNotch.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orvu {

/// What stands in the place of a page in an empty tab.
struct BrowserNewTabPage {
    static constexpr Phrase prompt = AddressNotch::prompt;
    static constexpr Phrase askTitle = phrase("Ask Kesto");
    static constexpr std::size_t sitesLimit = 8;

    /// The latest visit to each of the hosts visited last, the newest first. `visits` stand
    /// oldest first. "www." in front of a host makes it another one.
    [[nodiscard]] static std::vector<Visit> recentSites(const std::vector<Visit>& visits);
};

}  // namespace orvu
