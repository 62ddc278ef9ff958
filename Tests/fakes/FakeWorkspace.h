#pragma once

#include "platform/Workspace.h"

#include <string>
#include <vector>

namespace orvu {

/// A desktop that counts what it was asked.
class FakeWorkspace : public Workspace {
public:
    void makeDefaultBrowser() override { ++defaultBrowserRequests; }
    void open(const Url& url) override { opened.push_back(url.absoluteString()); }

    int defaultBrowserRequests = 0;
    std::vector<std::string> opened;
};

}  // namespace orvu
