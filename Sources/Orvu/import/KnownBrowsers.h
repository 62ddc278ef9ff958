#pragma once

#include "import/ImportSource.h"

#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orvu {

/// One browser that data can be imported from. Texts that are empty don't exist for it.
struct KnownBrowser {
    std::string_view id;
    std::string_view name;
    std::string_view host;
    BrowserKind kind = BrowserKind::chromium;
    /// Its folder below that of configurations; those of other channels follow, separated by ":".
    std::string_view configurationFolders;
    /// Its folder below the home, or below the data of programs for GNOME Web.
    std::string_view homeFolder;
    std::string_view snap;      ///< the name of its package
    std::string_view flatpaks;  ///< identifiers, separated by ":"
    /// How the packages of distributions call its entry in the menu, separated by ":", where that
    /// isn't the name of its flatpak.
    std::string_view menuEntries;

    /// All known browsers, in the order in which they are shown.
    [[nodiscard]] static std::span<const KnownBrowser> all();
    /// Where its profiles may lie, the folder of the distribution's package first, then that of
    /// the snap, then that of the flatpak. Most of them will not exist.
    [[nodiscard]] std::vector<std::filesystem::path> bases(const ImportFolders& folders) const;
    /// The names of the desktop files that it may have, in the same order.
    [[nodiscard]] std::vector<std::string> desktopFiles() const;
};

}  // namespace orvu
