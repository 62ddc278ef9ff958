#pragma once

#include "update/ApplicationFacts.h"
#include "update/SignedText.h"

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace orvu {

/// One member of an archive.
struct LabMember {
    enum class Kind { file, folder, symlink, hardlink, device, pipe };

    std::string path;
    std::string content{};  ///< or where a link leads
    Kind kind = Kind::file;
    unsigned mode = 0644;
    bool isSparse = false;
};

/// What the maker of updates does: lists, packs and signs.
struct LabUpdate {
    std::vector<LabMember> members;
    SignedText text{};
    std::string archive{};   ///< bytes
    std::string message{};   ///< the text with its signature
    std::string manifest{};  ///< as the server gives it

    LabMember& member(std::string_view path);
    SignedText::File& listed(std::string_view path);
};

/// A folder with an application of the build 10 in it, removed at the end.
class UpdateLab {
public:
    static constexpr const char* server = "updates.example";
    static constexpr const char* archiveAddress = "https://updates.example/orvu/next.tar.gz";

    UpdateLab();
    UpdateLab(const UpdateLab&) = delete;
    UpdateLab& operator=(const UpdateLab&) = delete;
    ~UpdateLab();

    [[nodiscard]] const std::filesystem::path& folder() const { return folder_; }
    [[nodiscard]] std::filesystem::path application() const { return folder_ / "Orvu.app"; }

    /// The files of a build; its program says which build it is.
    [[nodiscard]] static std::vector<LabMember> members(int build);
    /// An update with its list; `seal` does the rest.
    [[nodiscard]] static LabUpdate update(int build);
    /// Packs, hashes, signs and writes the manifest.
    static void seal(LabUpdate& update);
    static void pack(LabUpdate& update);
    static void sign(LabUpdate& update, char seed = 'k');
    /// What is signed of the archive becomes what it is.
    static void describeArchive(LabUpdate& update);
    static void writeManifest(LabUpdate& update);

    /// The public key that `sign` signs for, in hexadecimal.
    [[nodiscard]] static std::string publicKey(char seed = 'k');
    [[nodiscard]] static std::string hash(std::string_view bytes);

    /// Writes the files of a build as a copy of this name, as an installation has them.
    void placeCopy(int build, const char* name) const;
    /// Places a staged copy with its signed text.
    void placeStaged(int build) const;
    /// All that lies in a folder: kinds, modes, sizes and hashes. Without the empty lock files.
    [[nodiscard]] static std::string snapshot(const std::filesystem::path& folder);
    [[nodiscard]] std::string snapshot() const { return snapshot(folder_); }
    /// What the listing of the application is when it is whole and of this build.
    [[nodiscard]] static std::string wholeCopy(int build);

private:
    std::filesystem::path folder_;
};

void writeLabFile(const std::filesystem::path& file, std::string_view content, unsigned mode);

}  // namespace orvu
