#pragma once

#include "platform/Workspace.h"

namespace orvu {

/// The desktop's registry of programs.
class LinuxWorkspace : public Workspace {
public:
    /// Writes a desktop file and an icon for the running program into the user's own folders if
    /// the system has none, and makes it the program for http and https addresses.
    bool makeDefaultBrowser() override;
    [[nodiscard]] std::optional<std::string> programFor(const Url& url) override;
    void open(const Url& url) override;
    /// Where no file manager answers, the file's folder is opened instead.
    void showFile(const std::filesystem::path& file) override;
};

}  // namespace orvu
