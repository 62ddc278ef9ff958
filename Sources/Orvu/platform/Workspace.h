#pragma once

#include "foundation/Url.h"

namespace orvu {

/// The desktop around the program.
class Workspace {
public:
    virtual ~Workspace() = default;

    /// Registers this program as the one that opens web addresses. What the desktop refuses is
    /// not reported.
    virtual void makeDefaultBrowser() = 0;
    /// Opens an address in the program that the desktop has for it. Failures are not reported.
    virtual void open(const Url& url) = 0;
};

}  // namespace orvu
