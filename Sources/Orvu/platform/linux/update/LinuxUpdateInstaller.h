#pragma once

#include "platform/BackgroundWork.h"
#include "platform/linux/update/UpdateStaging.h"
#include "platform/UpdateInstaller.h"

#include <filesystem>
#include <optional>

namespace orvu {

/// Updates of the copy that lies in a folder `Orvu.app`.
class LinuxUpdateInstaller : public UpdateInstaller {
public:
    struct Copy {
        std::filesystem::path application;  ///< the folder; empty if the program lies in none
        ApplicationFacts facts;
    };
    /// The copy that a program at this path belongs to. `program` has no links in it, as
    /// `/proc/self/exe` gives it.
    [[nodiscard]] static Copy copyOf(const std::filesystem::path& program);

    /// `background` must outlive this.
    LinuxUpdateInstaller(BackgroundWork& background, Copy copy, std::optional<UpdateKey> key,
                         UpdateServer server);

    [[nodiscard]] UpdateSupport support() const override;
    [[nodiscard]] std::int64_t takenBack() const override;
    [[nodiscard]] Future<std::optional<std::filesystem::path>> prepare() override;
    [[nodiscard]] Future<std::string> digest() override;
    [[nodiscard]] Future<Staged> stage(ExpectedUpdate expected) override;
    void discard() override;
    [[nodiscard]] std::optional<std::string> launchSwap(AfterSwap after) override;
    void confirmStart() override;

private:
    struct Work;

    BackgroundWork& background_;
    const Copy copy_;
    const std::optional<UpdateKey> key_;
    const std::shared_ptr<Work> work_;  ///< what threads use, maybe longer than this lives
};

}  // namespace orvu
