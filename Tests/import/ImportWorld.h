#pragma once

#include "import/Importer.h"
#include "import/ImportLines.h"
#include "platform/linux/foreign/LinuxForeignFiles.h"
#include "platform/TemporaryFolder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace orvu {

/// What stands in a file; empty if it isn't there.
inline std::string contentOf(const std::filesystem::path& file) {
    std::ifstream stream{file, std::ios::binary};
    return {std::istreambuf_iterator<char>{stream}, {}};
}

/// The home of a person with other browsers.
class ImportWorld : public testing::Test {
protected:
    using Path = std::filesystem::path;
    using Request = BrowserImporter::Request;

    ImportWorld() { std::filesystem::create_directories(home); }

    void write(const Path& file, std::string_view text) {
        std::filesystem::create_directories(file.parent_path());
        std::ofstream stream{file, std::ios::binary};
        stream << text;
        ASSERT_TRUE(stream.good()) << file;
    }
    /// Says that a file was changed so many seconds after some moment.
    static void touch(const Path& file, time_t seconds) {
        const timespec time{1'700'000'000 + seconds, 0};
        const timespec times[]{time, time};
        ASSERT_EQ(utimensat(AT_FDCWD, file.c_str(), times, 0), 0) << file;
    }
    void writeAt(const Path& file, time_t seconds) {
        write(file, "x");
        touch(file, seconds);
    }

    [[nodiscard]] Strings found() const {
        Strings ids;
        for (const auto& source : importer.sources()) ids.push_back(source.id);
        return ids;
    }
    [[nodiscard]] Path folderOf(std::string_view id) const {
        for (const auto& source : importer.sources()) {
            if (source.id == id) return source.folder;
        }
        return {};
    }
    [[nodiscard]] ImportResult read(BrowserKind kind, const Path& folder) const {
        return importer.read({.id = "x", .name = "X", .host = "x", .kind = kind, .folder = folder},
                             request);
    }
    /// What is left in the folder for copies.
    [[nodiscard]] Strings leftovers() const {
        Strings names;
        if (!std::filesystem::exists(caches)) return names;
        for (const auto& entry : std::filesystem::directory_iterator{caches}) {
            names.push_back(entry.path().filename());
        }
        return names;
    }

    const TemporaryFolder temporary;
    const Path home = temporary.path() / "home";
    const ImportFolders folders{.home = home,
                                .configuration = home / ".config",
                                .data = home / ".local/share",
                                .applications = temporary.path() / "Applications"};
    const Path caches = temporary.path() / "cache/Orvu";
    const std::shared_ptr<const ForeignFiles> reader = std::make_shared<LinuxForeignFiles>(caches);
    const ForeignFiles& files = *reader;
    const BrowserImporter importer{reader, folders};
    const Date now = Date::fromUnixSeconds(1'780'000'000);
    Request request{.now = now, .calendar = Calendar{"UTC"}};
};

}  // namespace orvu
