#pragma once

#include "platform/TemporaryFolder.h"
#include "platform/linux/defaults/Sqlite.h"
#include "platform/linux/defaults/SqliteUserDefaults.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
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
            "INSERT INTO defaults VALUES ('another process', 1)");
    }

    const TemporaryFolder temporary;
    const fs::path folder = temporary.path() / "Orvu";
    const fs::path file = folder / "UserDefaults.sqlite";
};

}  // namespace orvu
