#include "platform/linux/update/CopySwap.h"

#include "UpdateLab.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <fstream>

namespace orvu {
namespace {

using Phase = SwapRecord::Phase;

/// An application of the build 10 with the staged build 12 beside it.
class CopySwapTest : public testing::TestWithParam<bool> {
protected:
    CopySwapTest() { lab_.placeStaged(12); }

    bool swap() {
        return with([](CopySwap& swap) { return swap.swap(); });
    }
    bool prepareStart() {
        return with([](CopySwap& swap) { return swap.prepareStart(); });
    }
    void confirm(int build) {
        with([&](CopySwap& swap) {
            swap.confirm(build);
            return true;
        });
    }
    SwapRecord record() {
        SwapRecord result;
        with([&](CopySwap& swap) {
            result = swap.record();
            return true;
        });
        return result;
    }
    bool has(const char* name) { return exists(lab_.folder() / name); }
    std::string copy(const char* name) { return UpdateLab::snapshot(lab_.folder() / name); }

    UpdateLab lab_;
    std::optional<UpdateKey> key_ = UpdateKey::parse(UpdateLab::publicKey());
    bool canExchange_ = GetParam();

private:
    bool with(const std::function<bool(CopySwap&)>& action) {
        UpdateFolder folder{lab_.folder(), {.canExchange = canExchange_}};
        CopySwap swap{folder, key_};
        return action(swap);
    }
};

TEST_P(CopySwapTest, TheStagedCopyComesInAndTheOldOneIsKept) {
    EXPECT_TRUE(swap());

    EXPECT_EQ(copy("Orvu.app"), UpdateLab::wholeCopy(12));
    EXPECT_EQ(copy(".Orvu-previous.app"), UpdateLab::wholeCopy(10));
    EXPECT_FALSE(has(".Orvu-update.app"));
    EXPECT_EQ(record(), (SwapRecord{.phase = Phase::trial, .from = 10, .to = 12}));
}

TEST_P(CopySwapTest, TheOldCopyGoesWhenTheNewOneHasShownAWindow) {
    swap();
    prepareStart();
    EXPECT_TRUE(has(".Orvu-previous.app"));

    confirm(12);

    EXPECT_FALSE(has(".Orvu-previous.app"));
    EXPECT_EQ(record().phase, Phase::none);
}

TEST_P(CopySwapTest, AnotherCopysWindowDoesntCount) {
    swap();

    confirm(10);

    EXPECT_TRUE(has(".Orvu-previous.app"));
    EXPECT_EQ(record().phase, Phase::trial);
}

TEST_P(CopySwapTest, ACopyThatShowedNoWindowTwiceIsTakenBackAtTheThirdStart) {
    swap();
    prepareStart();
    prepareStart();
    EXPECT_EQ(copy("Orvu.app"), UpdateLab::wholeCopy(12));

    EXPECT_TRUE(prepareStart());

    EXPECT_EQ(copy("Orvu.app"), UpdateLab::wholeCopy(10));
    EXPECT_FALSE(has(".Orvu-previous.app"));
    EXPECT_FALSE(has(".Orvu-refused.app"));
    EXPECT_EQ(record().phase, Phase::none);
    EXPECT_EQ(record().takenBack, 12);
}

TEST_P(CopySwapTest, ACopyThatWasTakenBackDoesntComeInAgain) {
    swap();
    for (int i = 0; i < 3; ++i) prepareStart();
    lab_.placeStaged(12);

    EXPECT_FALSE(swap());

    EXPECT_EQ(copy("Orvu.app"), UpdateLab::wholeCopy(10));
}

TEST_P(CopySwapTest, AConfirmedCopyIsNeverTakenBack) {
    swap();
    prepareStart();
    confirm(12);

    for (int i = 0; i < 5; ++i) EXPECT_TRUE(prepareStart());

    EXPECT_EQ(copy("Orvu.app"), UpdateLab::wholeCopy(12));
}

TEST_P(CopySwapTest, AStartBesideTheRunningCopyDoesntCount) {
    swap();
    UpdateFolder folder{lab_.folder(), {.canExchange = canExchange_}};

    for (int i = 0; i < 5; ++i) {
        EXPECT_TRUE((CopySwap{folder, key_}.prepareStart(StartedBeside::running)));
    }

    EXPECT_EQ(record().starts, 0);
    EXPECT_EQ(copy("Orvu.app"), UpdateLab::wholeCopy(12));
}

TEST_P(CopySwapTest, ANewerUpdateComesInAlsoWhereTheLastOneWasNotConfirmed) {
    swap();
    lab_.placeStaged(13);

    EXPECT_TRUE(swap());

    EXPECT_EQ(copy("Orvu.app"), UpdateLab::wholeCopy(13));
    EXPECT_EQ(copy(".Orvu-previous.app"), UpdateLab::wholeCopy(12));
}

TEST_P(CopySwapTest, WithoutTheOldCopyTheNewOneStays) {
    swap();
    std::filesystem::remove_all(lab_.folder() / ".Orvu-previous.app");

    for (int i = 0; i < 5; ++i) EXPECT_TRUE(prepareStart());

    EXPECT_EQ(copy("Orvu.app"), UpdateLab::wholeCopy(12));
}

TEST_P(CopySwapTest, AnOrdinaryStartChangesNothing) {
    const auto before = lab_.snapshot();

    EXPECT_TRUE(prepareStart());
    EXPECT_TRUE(prepareStart());

    EXPECT_EQ(lab_.snapshot(), before);
}

TEST_P(CopySwapTest, WithoutAnApplicationThereIsNothingToStart) {
    std::filesystem::remove_all(lab_.application());
    std::filesystem::remove_all(lab_.folder() / ".Orvu-update.app");

    EXPECT_FALSE(prepareStart());
}

TEST_P(CopySwapTest, AStartThatFindsOnlyTheCopyAsideFinishesTheWork) {
    std::filesystem::rename(lab_.application(), lab_.folder() / ".Orvu-previous.app");
    const SwapRecord broken{.phase = Phase::swapping, .from = 10, .to = 12};
    writeLabFile(lab_.folder() / ".Orvu-update.record", broken.string(), 0600);

    EXPECT_TRUE(prepareStart());

    EXPECT_EQ(copy("Orvu.app"), UpdateLab::wholeCopy(12));
}

TEST_P(CopySwapTest, AStartThatFindsOnlyTheCopyAsideAndABadNewOneGivesTheOldOneBack) {
    std::filesystem::rename(lab_.application(), lab_.folder() / ".Orvu-previous.app");
    const SwapRecord broken{.phase = Phase::swapping, .from = 10, .to = 12};
    writeLabFile(lab_.folder() / ".Orvu-update.record", broken.string(), 0600);
    writeLabFile(lab_.folder() / ".Orvu-update.app/share/licence", "other", 0644);

    EXPECT_TRUE(prepareStart());

    EXPECT_EQ(copy("Orvu.app"), UpdateLab::wholeCopy(10));
    EXPECT_FALSE(has(".Orvu-update.app"));
}

TEST_P(CopySwapTest, AStartWithoutARecordFindsTheCopyAside) {
    std::filesystem::rename(lab_.application(), lab_.folder() / ".Orvu-previous.app");
    writeLabFile(lab_.folder() / ".Orvu-update.record", "no record", 0600);

    EXPECT_TRUE(prepareStart());

    EXPECT_EQ(copy("Orvu.app"), UpdateLab::wholeCopy(10));
}

TEST_P(CopySwapTest, ACopyOfAnotherBuildEndsTheTrial) {
    swap();
    std::filesystem::remove_all(lab_.application());
    lab_.placeCopy(14, "Orvu.app");

    EXPECT_TRUE(prepareStart());

    EXPECT_EQ(record().phase, Phase::none);
    EXPECT_EQ(copy("Orvu.app"), UpdateLab::wholeCopy(14));
}

/// What is done to a staged copy after it was checked for the first time.
struct Tampering {
    const char* name;
    std::function<void(const UpdateLab&)> change;
};

const std::vector<Tampering>& tamperings() {
    static const std::vector<Tampering> all{
        {"a file changed",
         [](const auto& lab) {
             writeLabFile(lab.folder() / ".Orvu-update.app/bin/orvu", "#!/bin/sh\n", 0755);
         }},
        {"a file more",
         [](const auto& lab) {
             writeLabFile(lab.folder() / ".Orvu-update.app/bin/more", "x", 0644);
         }},
        {"a file less",
         [](const auto& lab) {
             std::filesystem::remove(lab.folder() / ".Orvu-update.app/share/licence");
         }},
        {"a file by a link",
         [](const auto& lab) {
             const auto place = lab.folder() / ".Orvu-update.app/share/licence";
             std::filesystem::rename(place, lab.folder() / "licence");
             std::filesystem::create_symlink("../../licence", place);
         }},
        {"a file with a second name",
         [](const auto& lab) {
             std::filesystem::create_hard_link(lab.folder() / ".Orvu-update.app/share/licence",
                                               lab.folder() / "second");
         }},
        {"a folder by a link",
         [](const auto& lab) {
             const auto place = lab.folder() / ".Orvu-update.app/share";
             std::filesystem::rename(place, lab.folder() / "share");
             std::filesystem::create_symlink("../share", place);
         }},
        {"the copy by a link",
         [](const auto& lab) {
             const auto place = lab.folder() / ".Orvu-update.app";
             std::filesystem::rename(place, lab.folder() / "copy");
             std::filesystem::create_symlink("copy", place);
         }},
        {"a file that others write",
         [](const auto& lab) {
             chmod((lab.folder() / ".Orvu-update.app/bin/orvu").c_str(), 0777);
         }},
        {"a folder that others write",
         [](const auto& lab) { chmod((lab.folder() / ".Orvu-update.app/bin").c_str(), 0777); }},
        {"a set-user-id program",
         [](const auto& lab) {
             chmod((lab.folder() / ".Orvu-update.app/bin/orvu").c_str(), 04755);
         }},
        {"a pipe in a file's place",
         [](const auto& lab) {
             const auto place = lab.folder() / ".Orvu-update.app/share/licence";
             std::filesystem::remove(place);
             mkfifo(place.c_str(), 0644);
         }},
        {"a file of another person",
         [](const auto& lab) {
             const auto place = lab.folder() / ".Orvu-update.app/share/licence";
             if (chown(place.c_str(), 65534, 65534) != 0) std::filesystem::remove(place);
         }},
        {"no copy",
         [](const auto& lab) { std::filesystem::remove_all(lab.folder() / ".Orvu-update.app"); }},
        {"another copy that is signed",
         [](const auto& lab) {
             std::filesystem::remove_all(lab.folder() / ".Orvu-update.app");
             lab.placeCopy(13, ".Orvu-update.app");
         }},
        {"an older signed copy",
         [](const auto& lab) {
             std::filesystem::remove_all(lab.folder() / ".Orvu-update.app");
             lab.placeStaged(9);
         }},
        {"the running build's signed copy",
         [](const auto& lab) {
             std::filesystem::remove_all(lab.folder() / ".Orvu-update.app");
             lab.placeStaged(10);
         }},
        {"no signed text",
         [](const auto& lab) { std::filesystem::remove(lab.folder() / ".Orvu-update.signed"); }},
        {"a signed text that is a link",
         [](const auto& lab) {
             const auto place = lab.folder() / ".Orvu-update.signed";
             std::filesystem::rename(place, lab.folder() / "signed");
             std::filesystem::create_symlink("signed", place);
         }},
        {"a signature of another key",
         [](const auto& lab) {
             auto update = UpdateLab::update(12);
             UpdateLab::seal(update);
             UpdateLab::sign(update, 'x');
             writeLabFile(lab.folder() / ".Orvu-update.signed", update.message, 0600);
         }},
    };
    return all;
}

TEST_P(CopySwapTest, AStagedCopyThatWasChangedIsNotBroughtIn) {
    for (const Tampering& each : tamperings()) {
        const UpdateLab lab;
        lab.placeStaged(12);
        each.change(lab);
        const auto before = lab.snapshot();
        UpdateFolder folder{lab.folder(), {.canExchange = canExchange_}};

        EXPECT_FALSE((CopySwap{folder, key_}.swap())) << each.name;

        EXPECT_EQ(lab.snapshot(), before) << each.name;
    }
}

TEST_P(CopySwapTest, ACopyWithoutAKeyBringsNothingIn) {
    key_ = std::nullopt;
    const auto before = lab_.snapshot();

    EXPECT_FALSE(swap());

    EXPECT_EQ(lab_.snapshot(), before);
}

TEST_P(CopySwapTest, OpenFilesOfTheOldCopyStayReadable) {
    std::ifstream open{lab_.application() / "share/licence"};

    swap();
    prepareStart();

    std::string line;
    std::getline(open, line);
    EXPECT_EQ(line, "Licence of 10");
}

INSTANTIATE_TEST_SUITE_P(BothWays, CopySwapTest, testing::Bool(),
                         [](const auto& each) { return each.param ? "Exchange" : "Renames"; });

}  // namespace
}  // namespace orvu
