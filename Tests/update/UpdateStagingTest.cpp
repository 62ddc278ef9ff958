#include "platform/linux/update/CopySwap.h"
#include "platform/linux/update/UpdateStaging.h"
#include "UpdateLab.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace orvu {
namespace {

const std::string notUnpacked = "The update couldn't be unpacked.";

class UpdateStagingTest : public testing::Test {
protected:
    UpdateStagingTest() { UpdateLab::seal(update_); }

    /// Stages an update in a process for which no file may have more than `bytes`, as on a disk
    /// that is full from there on. Gives the exit status: 0 if it was staged.
    int stageWithin(rlim_t bytes) {
        const pid_t child = fork();
        if (child == 0) {
            signal(SIGXFSZ, SIG_IGN);
            UpdateFolder folder{lab_.folder()};
            UpdateStaging staging{folder, UpdateKey::parse(UpdateLab::publicKey()),
                                  UpdateServer{UpdateLab::server}};
            const auto place = staging.prepare();
            if (!place) _exit(2);
            writeLabFile(*place, update_.archive, 0600);
            const rlimit limit{bytes, bytes};
            setrlimit(RLIMIT_FSIZE, &limit);
            const auto staged = staging.stage(
                {.version = "1.12", .build = 12, .newerThan = 10, .signedText = update_.message});
            _exit(staged.failure.empty() ? 0 : staged.failure == notUnpacked ? 1 : 3);
        }
        int status = 0;
        EXPECT_EQ(waitpid(child, &status, 0), child);
        return WEXITSTATUS(status);
    }

    UpdateLab lab_;
    LabUpdate update_ = UpdateLab::update(12);
};

TEST_F(UpdateStagingTest, EachFileThatCantBeWrittenIsToldAndLeavesTheDiskAsItWas) {
    const auto before = lab_.snapshot();
    int refused = 0;
    // The largest file has 5000 bytes, the signed text about 700.
    for (const rlim_t bytes : {0U, 10U, 40U, 60U, 100U, 600U, 4999U}) {
        EXPECT_EQ(stageWithin(bytes), 1) << bytes;
        EXPECT_EQ(lab_.snapshot(), before) << bytes;
        ++refused;
    }
    EXPECT_EQ(refused, 7);

    EXPECT_EQ(stageWithin(5000), 0);
}

TEST_F(UpdateStagingTest, ARecordThatCantBeWrittenSwapsNothing) {
    lab_.placeStaged(12);
    const auto before = lab_.snapshot();
    const pid_t child = fork();
    if (child == 0) {
        signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{0, 0};
        setrlimit(RLIMIT_FSIZE, &limit);
        UpdateFolder folder{lab_.folder()};
        CopySwap swap{folder, UpdateKey::parse(UpdateLab::publicKey())};
        _exit(swap.swap() ? 0 : 1);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);

    EXPECT_EQ(WEXITSTATUS(status), 1);

    EXPECT_EQ(lab_.snapshot(), before);
}

TEST_F(UpdateStagingTest, AFolderThatCantBeWrittenHasNoPlaceForAnArchive) {
    UpdateFolder folder{"/proc/self"};
    UpdateStaging staging{folder, UpdateKey::parse(UpdateLab::publicKey()),
                          UpdateServer{UpdateLab::server}};

    EXPECT_FALSE(staging.prepare());
}

TEST_F(UpdateStagingTest, ACopyWithoutAKeyIsNotSignedForUpdates) {
    UpdateFolder folder{lab_.folder()};
    const auto before = lab_.snapshot();
    UpdateStaging staging{folder, std::nullopt, UpdateServer{UpdateLab::server}};
    writeLabFile(staging.prepare().value(), update_.archive, 0600);

    const auto staged = staging.stage(
        {.version = "1.12", .build = 12, .newerThan = 10, .signedText = update_.message});

    EXPECT_EQ(staged.failure,
              "This copy of Orvu isn't signed for updates. Download Orvu from "
              "updates.example/orvu.");
    EXPECT_EQ(lab_.snapshot(), before);
}

TEST_F(UpdateStagingTest, ABuildThatIsNotNewerIsRefusedWhateverWasOffered) {
    UpdateFolder folder{lab_.folder()};
    const auto before = lab_.snapshot();
    UpdateStaging staging{folder, UpdateKey::parse(UpdateLab::publicKey()),
                          UpdateServer{UpdateLab::server}};
    writeLabFile(staging.prepare().value(), update_.archive, 0600);

    const auto staged = staging.stage(
        {.version = "1.12", .build = 12, .newerThan = 12, .signedText = update_.message});

    EXPECT_EQ(staged.failure, "The update isn't signed by Zarvo, so Orvu didn't install it.");
    EXPECT_EQ(lab_.snapshot(), before);
}

TEST_F(UpdateStagingTest, TheFolderOfAnArchiveIsItsOwnersAlone) {
    UpdateFolder folder{lab_.folder()};
    UpdateStaging staging{folder, std::nullopt, UpdateServer{UpdateLab::server}};

    const auto place = staging.prepare().value();

    EXPECT_EQ(std::filesystem::status(place.parent_path()).permissions(),
              std::filesystem::perms::owner_all);
    EXPECT_EQ(place.parent_path().parent_path(), lab_.folder());
}

}  // namespace
}  // namespace orvu
