#pragma once

#include "core/Bookmarks.h"
#include "core/Records.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace orvu {

/// Which files a browser keeps, and how its clock counts.
enum class BrowserKind { chromium, firefox, safari, gnomeWeb };

/// "chromium", "firefox", "safari" or "gnomeweb".
[[nodiscard]] std::string_view rawValue(BrowserKind kind);
/// The file that tells whether the system lets us read this browser's data.
[[nodiscard]] std::string_view probeFile(BrowserKind kind);
/// The files by which a folder is known to hold a profile.
[[nodiscard]] std::vector<std::string_view> profileFiles(BrowserKind kind);

/// One browser whose data can be imported.
struct ImportSource {
    std::string id;    ///< short and in small letters
    std::string name;  ///< as shown
    std::string host;  ///< the site of the browser's maker, with a path or without
    BrowserKind kind = BrowserKind::chromium;
    std::filesystem::path folder;  ///< of the profile that was used last
    bool needsAccess = false;      ///< the system denies us the files for now

    friend bool operator==(const ImportSource&, const ImportSource&) = default;
};

/// What a read brought.
struct ImportResult {
    std::vector<BookmarkStore::Entry> bookmarks;  ///< in the order met
    std::vector<Visit> visits;
    bool blocked = false;  ///< the system refused the files; both lists are empty then
};

/// Where browsers keep their data.
struct ImportFolders {
    std::filesystem::path home;
    std::filesystem::path configuration;  ///< of all programs
    std::filesystem::path data;           ///< of all programs
    std::filesystem::path applications{"/Applications"};
};

}  // namespace orvu
