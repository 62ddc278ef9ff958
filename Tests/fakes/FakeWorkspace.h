#pragma once

#include "platform/Workspace.h"

namespace orvu {

/// A desktop that counts what it was asked.
class FakeWorkspace : public Workspace {
public:
    void makeDefaultBrowser() override { ++defaultBrowserRequests; }

    int defaultBrowserRequests = 0;
};

}  // namespace orvu
