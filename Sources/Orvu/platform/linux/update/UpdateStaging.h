#pragma once

#include "platform/linux/update/UpdateFolder.h"
#include "platform/linux/update/UpdateKey.h"
#include "platform/UpdateInstaller.h"
#include "update/UpdateServer.h"

#include <filesystem>
#include <optional>
#include <string>

namespace orvu {

/// Takes an archive from its download to a checked copy beside the application. All of it is slow
/// and belongs off the main thread.
class UpdateStaging {
public:
    /// Without a key there are no updates. `folder` must outlive this.
    UpdateStaging(UpdateFolder& folder, std::optional<UpdateKey> key, UpdateServer server)
        : folder_(folder), key_(key), server_(std::move(server)) {}

    /// A new folder for one update, in the place of an older one. Gives the place of its archive;
    /// nothing if that can't be.
    [[nodiscard]] std::optional<std::filesystem::path> prepare();
    /// The SHA-256 of the archive; empty if it can't be read.
    [[nodiscard]] std::string digest() const;
    /// Checks the signature, what is signed, the archive's form, and what was unpacked, in this
    /// order; then the copy bears its name, and an older one of that name is gone.
    [[nodiscard]] UpdateInstaller::Staged stage(const ExpectedUpdate& expected);
    /// Removes the folder that `prepare` made.
    void discard() { folder_.remove(UpdateNames::work); }

private:
    [[nodiscard]] std::filesystem::path archivePlace() const;
    [[nodiscard]] FileDescriptor openArchive() const;
    /// The sentence of the first check that fails; empty if all is well.
    [[nodiscard]] std::string checkAndUnpack(const ExpectedUpdate& expected);
    [[nodiscard]] bool isExpected(const SignedText& text, const ExpectedUpdate& expected,
                                  const FileDescriptor& archive) const;
    [[nodiscard]] std::string unpack(const SignedText& text, const FileDescriptor& archive);
    [[nodiscard]] bool isWhole(const SignedText& text) const;
    [[nodiscard]] bool putInPlace(const std::string& signedText);

    UpdateFolder& folder_;
    const std::optional<UpdateKey> key_;
    const UpdateServer server_;
};

}  // namespace orvu
