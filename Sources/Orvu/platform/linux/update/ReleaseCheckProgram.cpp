#include "platform/linux/files/FileText.h"
#include "platform/linux/update/UpdateStaging.h"
#include "update/UpdateRelease.h"

#include <cstdio>

// For who makes releases: asks the updater's own code whether it would take one.
namespace {

using orvu::UpdateFolder;
using orvu::UpdateRelease;
using orvu::UpdateServer;
using Path = std::filesystem::path;

constexpr int refused = 1;
constexpr int misused = 2;

struct Given {
    Path folder;
    std::optional<orvu::UpdateKey> key;
    UpdateServer server;
};

std::string textOf(const Path& file, std::size_t longest) {
    // A byte more than what is allowed, so that this shows.
    return orvu::fileText(file, longest + 1).value_or(std::string{});
}

bool isOffered(const UpdateRelease& release, const Given& given, const Path& archive) {
    return release.build > 0 && given.server.serves(release.url) && archive.has_filename() &&
           release.url.absoluteString().ends_with("/orvu/" + archive.filename().string());
}

/// What keeps the updater from taking the release; empty if nothing does.
std::string problem(const Given& given) {
    const auto manifest = textOf(given.folder / "update.json", UpdateRelease::longest);
    const auto release = UpdateRelease::parse(manifest);
    if (!release) return "update.json doesn't follow the rules.";
    const Path archive = given.folder / Path{release->url.absoluteString()}.filename();
    if (!isOffered(*release, given, archive)) return "update.json offers nothing of this server.";
    std::error_code failure;
    if (file_size(archive, failure) > orvu::SignedText::largestArchive || failure) {
        return "The archive is missing or too large.";
    }
    UpdateFolder folder{given.folder};
    orvu::UpdateStaging staging{folder, given.key, given.server};
    const auto place = staging.prepare();
    if (!place || !copy_file(archive, *place, failure)) return "The folder can't be written.";
    if (staging.digest() != release->sha256) return given.server.mismatch();
    const auto signedText = textOf(archive.string() + ".signed", orvu::SignedText::longest + 256);
    return staging
        .stage({.version = release->version, .build = release->build, .signedText = signedText})
        .failure;
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 4) {
        std::fputs(
            "Usage: orvu-release-check FOLDER KEY SERVER\n"
            "Says whether a copy with this public key would take the update that SERVER has "
            "in FOLDER.\nFOLDER is changed: the update is unpacked there.\n",
            stderr);
        return misused;
    }
    const Given given{arguments[1], orvu::UpdateKey::parse(arguments[2]),
                      UpdateServer{arguments[3]}};
    const std::string found = problem(given);
    if (!found.empty()) std::fprintf(stderr, "%s\n", found.c_str());
    return found.empty() ? 0 : refused;
}
