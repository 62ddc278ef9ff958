#pragma once

#include "core/Bookmarks.h"
#include "core/Records.h"

#include <string>
#include <vector>

namespace orvu {

using Strings = std::vector<std::string>;
using Entries = std::vector<BookmarkStore::Entry>;

/// "ADDRESS TITLE" of each bookmark or visit.
inline Strings lines(const Entries& entries) {
    Strings result;
    for (const auto& [url, title] : entries) result.push_back(url.absoluteString() + " " + title);
    return result;
}

inline Strings lines(const std::vector<Visit>& visits) {
    Strings result;
    for (const Visit& visit : visits) {
        result.push_back(visit.url.absoluteString() + " " + visit.title);
    }
    return result;
}

}  // namespace orvu
