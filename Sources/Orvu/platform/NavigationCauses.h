#pragma once

#include "foundation/Url.h"
#include "platform/DownloadRequest.h"

#include <cstddef>
#include <deque>

namespace orvu {

/// Who caused the last navigations of a page. The engine tells so when a navigation begins, but no
/// more when it turns out to be a download: there only the address is left to know it by.
class NavigationCauses {
public:
    /// So many are kept, the newest.
    static constexpr std::size_t limit = 256;

    void add(const Url& url, DownloadCause cause);
    /// The cause of the newest navigation to `url`; the page itself for one that isn't known.
    [[nodiscard]] DownloadCause cause(const Url& url) const;

private:
    struct Entry {
        std::size_t address;  ///< a hash: addresses may be files of many megabytes
        DownloadCause cause;
    };
    std::deque<Entry> entries_;  ///< the newest first
};

}  // namespace orvu
