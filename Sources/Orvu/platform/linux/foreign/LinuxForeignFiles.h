#pragma once

#include "platform/ForeignFiles.h"

namespace orvu {

/// Reads databases from private copies, below the folder `caches`, which need not exist yet.
class LinuxForeignFiles : public ForeignFiles {
public:
    explicit LinuxForeignFiles(std::filesystem::path caches) : caches_(std::move(caches)) {}

    [[nodiscard]] Access access(const std::filesystem::path& file) const override;
    [[nodiscard]] bool isFolder(const std::filesystem::path& path) const override;
    [[nodiscard]] std::vector<std::filesystem::path> entries(
        const std::filesystem::path& folder) const override;
    [[nodiscard]] std::optional<Time> modified(const std::filesystem::path& file) const override;
    [[nodiscard]] std::optional<std::string> text(const std::filesystem::path& file,
                                                  std::size_t limit,
                                                  ReadDeadline deadline) const override;
    [[nodiscard]] std::unique_ptr<DatabaseSnapshot> database(const std::filesystem::path& file,
                                                             ReadDeadline deadline) const override;
    void removeLeftovers() const override;

private:
    const std::filesystem::path caches_;
};

}  // namespace orvu
