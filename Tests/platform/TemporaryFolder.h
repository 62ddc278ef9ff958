#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>

namespace orvu {

/// An empty folder of its own, removed at the end.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "orvu-XXXXXX").string();
        path_ = mkdtemp(name.data()) ? name : "";
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code failure;
        if (!path_.empty()) std::filesystem::remove_all(path_, failure);
    }

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

}  // namespace orvu
