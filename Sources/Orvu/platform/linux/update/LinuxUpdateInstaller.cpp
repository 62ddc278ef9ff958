#include "platform/linux/update/LinuxUpdateInstaller.h"

#include "platform/linux/update/CopySwap.h"
#include "platform/linux/update/SwapLauncher.h"

#include <sys/stat.h>

#include <utility>

namespace orvu {
namespace {

using Path = std::filesystem::path;

bool isOwn(const Path& folder) {
    struct stat facts{};
    return lstat(folder.c_str(), &facts) == 0 && S_ISDIR(facts.st_mode) &&
           facts.st_uid == geteuid();
}

}  // namespace

struct LinuxUpdateInstaller::Work {
    Work(const Path& parent, std::optional<UpdateKey> key, UpdateServer server)
        : folder(parent), staging(folder, key, std::move(server)) {}

    UpdateFolder folder;
    UpdateStaging staging;
};

LinuxUpdateInstaller::Copy LinuxUpdateInstaller::copyOf(const Path& program) {
    const Path application = program.parent_path().parent_path();
    if (application.filename() != UpdateNames::application) return {};
    if (program != application / ApplicationFacts::program) return {};
    const UpdateFolder folder{application.parent_path()};
    return {application, folder.facts(UpdateNames::application)};
}

LinuxUpdateInstaller::LinuxUpdateInstaller(BackgroundWork& background, Copy copy,
                                           std::optional<UpdateKey> key, UpdateServer server)
    : background_(background),
      copy_(std::move(copy)),
      key_(key),
      work_(std::make_shared<Work>(copy_.application.parent_path(), key, std::move(server))) {}

UpdateSupport LinuxUpdateInstaller::support() const {
    const bool isOurs =
        !copy_.application.empty() && isOwn(copy_.application) && work_->folder.isTrusted();
    return isOurs ? UpdateSupport::own : UpdateSupport::system;
}

std::int64_t LinuxUpdateInstaller::takenBack() const {
    return CopySwap{work_->folder, key_}.record().takenBack;
}

Future<std::optional<Path>> LinuxUpdateInstaller::prepare() {
    return background_.run<std::optional<Path>>([work = work_] { return work->staging.prepare(); },
                                                std::nullopt);
}

Future<std::string> LinuxUpdateInstaller::digest() {
    return background_.run<std::string>([work = work_] { return work->staging.digest(); }, {});
}

Future<UpdateInstaller::Staged> LinuxUpdateInstaller::stage(ExpectedUpdate expected) {
    return background_.run<Staged>(
        [work = work_, expected = std::move(expected)] { return work->staging.stage(expected); },
        Staged{.failure = std::string{update_words::notUnpacked}});
}

void LinuxUpdateInstaller::discard() {
    static_cast<void>(background_.run<bool>(
        [work = work_] {
            work->staging.discard();
            return true;
        },
        false));
}

std::optional<std::string> LinuxUpdateInstaller::launchSwap(AfterSwap after) {
    return SwapLauncher::launch(copy_.application / SwapLauncher::program,
                                copy_.application.parent_path(), after);
}

void LinuxUpdateInstaller::confirmStart() {
    if (support() != UpdateSupport::own) return;
    static_cast<void>(background_.run<bool>(
        [parent = copy_.application.parent_path(), build = copy_.facts.build] {
            UpdateFolder folder{parent};
            CopySwap{folder, std::nullopt}.confirm(build);
            return true;
        },
        false));
}

}  // namespace orvu
