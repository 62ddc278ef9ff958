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
    void showFile(const std::filesystem::path& file) override { shown.push_back(file.string()); }

    int defaultBrowserRequests = 0;
    std::vector<std::string> opened;
    std::vector<std::string> shown;  ///< files
};

}  // namespace orvu
