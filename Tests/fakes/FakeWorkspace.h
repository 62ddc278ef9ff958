#pragma once

#include "platform/Workspace.h"

#include <map>
#include <string>
#include <vector>

namespace orvu {

/// A desktop that counts what it was asked.
class FakeWorkspace : public Workspace {
public:
    bool makeDefaultBrowser() override {
        ++defaultBrowserRequests;
        return becomesDefault;
    }
    [[nodiscard]] std::optional<std::string> programFor(const Url& url) override {
        const auto program = programs.find(std::string{url.scheme()});
        return program == programs.end() ? std::nullopt : std::optional{program->second};
    }
    void open(const Url& url) override { opened.push_back(url.absoluteString()); }
    void showFile(const std::filesystem::path& file) override { shown.push_back(file.string()); }

    int defaultBrowserRequests = 0;
    bool becomesDefault = true;
    std::map<std::string, std::string> programs;  ///< names, by scheme
    std::vector<std::string> opened;
    std::vector<std::string> shown;  ///< files
};

}  // namespace orvu
