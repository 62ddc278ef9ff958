#pragma once

#include "platform/ForeignFiles.h"
#include "platform/linux/foreign/PrivateFolder.h"

#include <filesystem>
#include <string>

namespace orvu {

/// A copy of another browser's database, together with its log and journal: the browser may be
/// running, and keeps its own file locked. The copy lies in a private folder and goes with this
/// object.
class CopiedDatabase : public DatabaseSnapshot {
public:
    /// Copies `file` below the folder `caches`. All of this object's work is to be over by the
    /// deadline.
    CopiedDatabase(const std::filesystem::path& file, const std::filesystem::path& caches,
                   ReadDeadline deadline);

    /// False if it could not be made.
    [[nodiscard]] bool isThere() const { return isThere_; }
    [[nodiscard]] bool query(const std::string& sql,
                             const std::function<bool(const Row&)>& take) const override;

private:
    bool copy(const std::filesystem::path& file);
    [[nodiscard]] bool copyOnce(const std::filesystem::path& file) const;
    void recover() const;
    void clear() const;

    const PrivateFolder folder_;
    const ReadDeadline deadline_;
    const std::filesystem::path path_;
    bool isThere_ = false;
};

}  // namespace orvu
