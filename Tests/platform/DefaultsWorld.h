#pragma once

#include "platform/TemporaryFolder.h"
#include "platform/linux/defaults/Sqlite.h"
#include "platform/linux/defaults/SqliteUserDefaults.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

namespace orvu {

namespace fs = std::filesystem;
using namespace std::string_literals;
using testing::Optional;
using Access = SqliteConnection::Access;

inline std::string contents(const fs::path& file) {
    std::ifstream stream{file, std::ios::binary};
    return {std::istreambuf_iterator<char>{stream}, {}};
}

inline void overwrite(const fs::path& file, std::string_view bytes) {
    std::ofstream stream{file, std::ios::binary | std::ios::trunc};
    stream << bytes;
}

/// Puts rubbish in the place of some bytes, without touching the rest of the file.
inline void damage(const fs::path& file, std::size_t at, std::size_t count) {
    std::fstream stream{file, std::ios::binary | std::ios::in | std::ios::out};
    stream.seekp(static_cast<std::streamoff>(at));
    stream << std::string(count, '\xA5');
}

inline mode_t permissions(const fs::path& path) {
    struct stat status{};
    return stat(path.c_str(), &status) == 0 ? status.st_mode & ALLPERMS : 0;
}

/// A list of records of some length, as a history is.
inline std::string listOf(const std::vector<std::string>& addresses) {
    std::string list = "[";
    for (const auto& address : addresses) {
        if (list.size() > 1) list += ",";
        list += R"({"url":")" + address + R"(","id":"0A1B2C3D-0000-4000-8000-000000000000"})";
    }
    return list + "]";
}

/// Does what is to be done in the background without waiting, and makes no older copy.
inline StorageOptions atOnce() {
    using namespace std::chrono_literals;
    StorageOptions options;
    options.passing = {"browserSession", "browserGroups"};
    options.pace = {.afterStart = 0ms,
                    .afterChange = 0ms,
                    .afterDeletion = 0ms,
                    .afterFailure = 10ms,
                    .firstBackup = 1h,
                    .nextBackup = 1h,
                    .backupAge = 0s};
    return options;
}

/// Makes the older copy again and again.
inline StorageOptions backingUp() {
    auto options = atOnce();
    options.pace.firstBackup = options.pace.nextBackup = std::chrono::milliseconds{5};
    return options;
}

/// Whether a file of the folder with this ending holds the text.
inline bool folderHas(const fs::path& folder, std::string_view text, std::string_view ending) {
    for (const auto& entry : fs::directory_iterator{folder}) {
        const bool isMeant = entry.path().string().ends_with(ending);
        if (isMeant && entry.is_regular_file() && contents(entry.path()).contains(text))
            return true;
    }
    return false;
}

/// Waits for what a thread does; false if it does not happen.
template <class Condition>
bool waitUntil(const Condition& condition) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds{30};
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds{2});
    }
    return true;
}

class DefaultsTest : public testing::Test {
protected:
    [[nodiscard]] fs::path beside(const char* suffix) const {
        return file.parent_path() / (file.filename().string() + suffix);
    }
    /// A store with some settings, closed again.
    void makeStore() const {
        SqliteUserDefaults defaults{file};
        defaults.setString("searchEngine", "marginalia");
        defaults.setInteger("launchCount", 7);
        defaults.setData("browserVisits", std::string(300'000, 'v'));
        defaults.setData("orvuBookmarks", std::string(200'000, 'b'));
        defaults.setNumber("readerSize", 18.5);
    }

    /// Makes an older copy of what is stored now.
    void backUp() const {
        fs::remove(beside(".backup"));
        const SqliteUserDefaults defaults{file, backingUp()};
        ASSERT_TRUE(waitUntil([&] { return fs::exists(beside(".backup")); }));
    }

    /// A page of a long value begins with the number of the next one. Makes the first such
    /// number of the history impossible.
    void breakHistory() const {
        constexpr std::size_t pageSize = 32768;
        const auto page = contents(file).find(std::string(pageSize - 100, 'v')) / pageSize;
        damage(file, page * pageSize, 4);
    }
    /// Makes an open store read the file again, as any writer beside it does.
    void forgetCache() const {
        SqliteConnection{file, Access::readWrite}.execute(
            "INSERT INTO defaults (key, value) VALUES ('another process', 1)");
    }

    const TemporaryFolder temporary;
    const fs::path folder = temporary.path() / "Orvu";
    const fs::path file = folder / "UserDefaults.sqlite";
};

}  // namespace orvu
