#pragma once

#include "foundation/async/Future.h"

#include <string>
#include <vector>

namespace orvu {

/// What websites have stored in one data store: cookies, storage and caches of every type.
class WebsiteData {
public:
    virtual ~WebsiteData() = default;

    /// The names of all records, each that of a registrable domain, of an address without one, or
    /// of what else the engine keeps together. Empty if they can't be read.
    [[nodiscard]] virtual Future<std::vector<std::string>> records() = 0;
    /// Removes the records of these names. Goes on to the end even if the future is dropped. The
    /// future gives whether it succeeded.
    [[nodiscard]] virtual Future<bool> remove(std::vector<std::string> names) = 0;
};

}  // namespace orvu
