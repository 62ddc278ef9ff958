#pragma once

#include "platform/DownloadFolder.h"

#include <memory>
#include <set>
#include <string>

namespace orvu {

/// A folder in memory, called "/Downloads".
class FakeDownloadFolder : public DownloadFolder {
public:
    class Place : public PartialFile {
    public:
        explicit Place(FakeDownloadFolder& folder) : folder_(folder), number_(++folder.made) {
            ++folder.places;
        }
        ~Place() override { --folder_.places; }

        [[nodiscard]] std::filesystem::path file() const override {
            return folder_.path() / (".place-" + std::to_string(number_)) / "part";
        }
        [[nodiscard]] Move moveTo(const std::filesystem::path& target) override {
            if (folder_.full) return Move::failed;
            const bool hidden = folder_.unseen.contains(target.string());
            const bool isNew = !hidden && folder_.files.insert(target.string()).second;
            return isNew ? Move::done : Move::taken;
        }

    private:
        FakeDownloadFolder& folder_;
        const int number_;
    };

    [[nodiscard]] std::filesystem::path path() const override { return "/Downloads"; }
    [[nodiscard]] bool exists(const std::filesystem::path& file) const override {
        return files.contains(file.string());
    }
    [[nodiscard]] std::unique_ptr<PartialFile> makePartialFile() override {
        return closed ? nullptr : std::make_unique<Place>(*this);
    }

    void put(const std::string& name) { files.insert((path() / name).string()); }

    std::set<std::string> files;   ///< paths
    std::set<std::string> unseen;  ///< paths that are taken though nothing is seen there
    int places = 0;                ///< those that are held
    int made = 0;
    bool closed = false;  ///< there are no places to be had
    bool full = false;    ///< nothing can be moved in
};

}  // namespace orvu
