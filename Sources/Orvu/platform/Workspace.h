#pragma once

#include "foundation/Url.h"

#include <filesystem>
#include <optional>
#include <string>

namespace orvu {

/// The desktop around the program.
class Workspace {
public:
    virtual ~Workspace() = default;

    /// Registers this program as the one that opens web addresses. Whether the desktop has it for
    /// that now.
    virtual bool makeDefaultBrowser() = 0;
    /// What people call the program that the desktop has for an address; nothing where it has none,
    /// or only this one.
    [[nodiscard]] virtual std::optional<std::string> programFor(const Url& url) = 0;
    /// Opens an address in the program that the desktop has for it. Failures are not reported.
    virtual void open(const Url& url) = 0;
    /// Selects a file in the desktop's file manager. Failures are not reported.
    virtual void showFile(const std::filesystem::path& file) = 0;
};

}  // namespace orvu
