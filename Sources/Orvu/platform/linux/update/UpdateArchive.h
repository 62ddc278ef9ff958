#pragma once

#include "update/ArchiveListing.h"

#include <cstdint>
#include <filesystem>

namespace orvu {

/// An update's archive: tar, compressed by gzip. Links, owners, times and extended attributes that
/// it may hold are never made. Any thread may use it.
class UpdateArchive {
public:
    /// `descriptor` is that of the whole archive and must outlive this.
    explicit UpdateArchive(int descriptor) : descriptor_(descriptor) {}

    /// Looks at all entries; what can't be read is refused.
    [[nodiscard]] ArchiveListing::Verdict verdict() const;
    /// Writes all entries below `folder`, which is empty and this person's alone, with the modes
    /// 0755 and 0644. False if one can't be written, or has become one that isn't allowed; what was
    /// written stays.
    [[nodiscard]] bool unpack(const std::filesystem::path& folder) const;

private:
    [[nodiscard]] std::uint64_t size() const;

    const int descriptor_;
};

}  // namespace orvu
