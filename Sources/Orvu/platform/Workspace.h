#pragma once

namespace orvu {

/// The desktop around the program.
class Workspace {
public:
    virtual ~Workspace() = default;

    /// Registers this program as the one that opens web addresses. What the desktop refuses is
    /// not reported.
    virtual void makeDefaultBrowser() = 0;
};

}  // namespace orvu
