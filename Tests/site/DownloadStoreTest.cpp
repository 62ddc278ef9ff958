#include "site/Downloads.h"

#include "fakes/FakeDownload.h"
#include "fakes/FakeDownloadFolder.h"
#include "fakes/FakeWorkspace.h"

#include <gtest/gtest.h>

#include <deque>

namespace orvu {
namespace {

using State = DownloadItem::State;

class DownloadStoreTest : public testing::Test {
protected:
    /// One more download; gives what the engine would do with it. It ends with its item.
    FakeDownload& start() {
        facts.emplace_back();
        auto download = std::make_unique<FakeDownload>(facts.back());
        FakeDownload& started = *download;
        store.add(std::move(download));
        return started;
    }
    FakeDownload& start(std::string_view name) {
        FakeDownload& started = start();
        static_cast<void>(started.decide(name));
        return started;
    }
    [[nodiscard]] DownloadItem& newest() const { return *store.items().front(); }
    [[nodiscard]] std::vector<std::string> names() const {
        std::vector<std::string> result;
        for (const auto& item : store.items()) result.push_back(item->name());
        return result;
    }

    std::deque<FakeDownload::Facts> facts;
    FakeDownloadFolder folder;
    FakeWorkspace workspace;
    DownloadStore store{folder, workspace};
};

TEST_F(DownloadStoreTest, ANewOneRunsAndHasNoNameOfItsOwnYet) {
    start();

    EXPECT_EQ(newest().name(), "Download");
    EXPECT_EQ(newest().fraction(), 0);
    EXPECT_EQ(newest().state(), State::running);
    EXPECT_EQ(newest().fileURL(), std::nullopt);
    EXPECT_EQ(store.running(), store.items().front());
}

TEST_F(DownloadStoreTest, TheNewestIsTheFirst) {
    start("a.txt");
    start("b.txt");
    start("c.txt");

    EXPECT_EQ(names(), (std::vector<std::string>{"c.txt", "b.txt", "a.txt"}));
    EXPECT_EQ(store.running(), store.items().front());
}

TEST_F(DownloadStoreTest, EachHasAnIdOfItsOwn) {
    start();
    start();

    EXPECT_NE(store.items()[0]->id(), store.items()[1]->id());
}

TEST_F(DownloadStoreTest, TheNameIsDecidedAtTheStartAndTheFileIsWrittenElsewhere) {
    FakeDownload& download = start();

    const auto written = download.decide("../12:30.txt");

    EXPECT_EQ(newest().name(), "12-30.txt");
    EXPECT_EQ(newest().fileURL(), "/Downloads/12-30.txt");
    EXPECT_EQ(written, "/Downloads/.place-1/part");
    EXPECT_FALSE(folder.exists("/Downloads/12-30.txt"));
}

TEST_F(DownloadStoreTest, AFinishedFileHasItsNameAndNothingElseIsLeft) {
    FakeDownload& download = start("a.txt");

    download.finish();

    EXPECT_EQ(newest().state(), State::done);
    EXPECT_EQ(newest().fraction(), 1);
    EXPECT_TRUE(folder.exists("/Downloads/a.txt"));
    EXPECT_EQ(folder.places, 0);
    EXPECT_EQ(store.running(), nullptr);
}

TEST_F(DownloadStoreTest, AnExistingFileIsNeverReplaced) {
    folder.put("a.txt");

    start("a.txt").finish();

    EXPECT_EQ(newest().fileURL(), "/Downloads/a 2.txt");
    EXPECT_EQ(folder.files, (std::set<std::string>{"/Downloads/a 2.txt", "/Downloads/a.txt"}));
}

TEST_F(DownloadStoreTest, TwoThatRunUnderOneNameGetDifferentOnes) {
    FakeDownload& first = start("a.txt");
    FakeDownload& second = start("a.txt");
    start("a.txt").fail();

    second.finish();
    first.finish();

    EXPECT_EQ(names(), (std::vector<std::string>{"a 3.txt", "a 2.txt", "a.txt"}));
    EXPECT_EQ(folder.files, (std::set<std::string>{"/Downloads/a 2.txt", "/Downloads/a.txt"}));
}

TEST_F(DownloadStoreTest, TheNameOfOneThatCameToNothingIsFreeAgain) {
    start("a.txt").fail();
    start("a.txt");
    newest().cancel();

    start("a.txt");

    EXPECT_EQ(names(), (std::vector<std::string>{"a.txt", "a.txt", "a.txt"}));
}

TEST_F(DownloadStoreTest, WhereTheNameWasTakenMeanwhileTheNextOneIsUsed) {
    FakeDownload& download = start("a.txt");
    folder.put("a.txt");
    folder.put("a 2.txt");

    download.finish();

    EXPECT_EQ(newest().state(), State::done);
    EXPECT_EQ(newest().name(), "a 3.txt");
    EXPECT_EQ(newest().fileURL(), "/Downloads/a 3.txt");
}

TEST_F(DownloadStoreTest, NamesTakenByWhatCannotBeSeenArePassedOver) {
    FakeDownload& download = start("a.txt");
    folder.unseen = {"/Downloads/a.txt", "/Downloads/a 2.txt", "/Downloads/a 3.txt"};

    download.finish();

    EXPECT_EQ(newest().state(), State::done);
    EXPECT_EQ(newest().fileURL(), "/Downloads/a 4.txt");
}

TEST_F(DownloadStoreTest, WithoutAFolderToWriteToItFails) {
    folder.closed = true;
    FakeDownload& download = start();

    const auto written = download.decide("a.txt");
    download.fail();

    EXPECT_EQ(written, std::nullopt);
    EXPECT_EQ(newest().state(), State::failed);
    EXPECT_EQ(newest().name(), "Download");
}

TEST_F(DownloadStoreTest, AWholeFileThatCannotGetItsNameIsAFailure) {
    FakeDownload& download = start("a.txt");
    folder.full = true;

    download.finish();

    EXPECT_EQ(newest().state(), State::failed);
    EXPECT_EQ(folder.places, 0);
}

TEST_F(DownloadStoreTest, AFinishWithoutAPlaceIsAFailure) {
    start().finish();

    EXPECT_EQ(newest().state(), State::failed);
}

TEST_F(DownloadStoreTest, AFailureLeavesNothingBehind) {
    FakeDownload& download = start("a.txt");
    download.progress(0.4);

    download.fail();

    EXPECT_EQ(newest().state(), State::failed);
    EXPECT_EQ(newest().fraction(), 0.4);
    EXPECT_TRUE(folder.files.empty());
    EXPECT_EQ(folder.places, 0);
}

TEST_F(DownloadStoreTest, CancellingARunningOneEndsInCancelledNeverFailed) {
    FakeDownload& download = start("a.txt");

    newest().cancel();
    EXPECT_EQ(newest().state(), State::cancelled);
    download.fail();

    EXPECT_EQ(newest().state(), State::cancelled);
    EXPECT_EQ(facts.back().cancels, 1);
    EXPECT_EQ(folder.places, 0);
}

TEST_F(DownloadStoreTest, ACancelledOneStaysCancelledEvenIfTheFileWasWholeAlready) {
    FakeDownload& download = start("a.txt");
    newest().cancel();

    download.progress(0.9);
    download.finish();

    EXPECT_EQ(newest().state(), State::cancelled);
    EXPECT_EQ(newest().fraction(), 0);
    EXPECT_TRUE(folder.files.empty());
    EXPECT_EQ(folder.places, 0);
}

TEST_F(DownloadStoreTest, OneCancelledBeforeItsNameIsDecidedWritesNothing) {
    FakeDownload& download = start();
    newest().cancel();

    EXPECT_EQ(download.decide("a.txt"), std::nullopt);
    EXPECT_EQ(folder.made, 0);
}

TEST_F(DownloadStoreTest, OneThatEndedCannotBeCancelled) {
    start("a.txt").finish();
    newest().cancel();
    EXPECT_EQ(newest().state(), State::done);
    EXPECT_EQ(facts.back().cancels, 0);

    start("b.txt").fail();
    newest().cancel();
    EXPECT_EQ(newest().state(), State::failed);
    EXPECT_EQ(facts.back().cancels, 0);
}

TEST_F(DownloadStoreTest, ProgressThatComesLateDoesNotMove) {
    FakeDownload& download = start("a.txt");
    download.finish();

    download.progress(0.7);

    EXPECT_EQ(newest().fraction(), 1);
    EXPECT_EQ(newest().state(), State::done);
}

TEST_F(DownloadStoreTest, ClearFinishedKeepsWhatRuns) {
    start("a.txt").finish();
    start("b.txt");
    start("c.txt").fail();
    start("d.txt");
    newest().cancel();

    store.clearFinished();

    EXPECT_EQ(names(), (std::vector<std::string>{"b.txt"}));
    EXPECT_TRUE(folder.exists("/Downloads/a.txt"));
}

TEST_F(DownloadStoreTest, ClearFinishedEmptiesAListInWhichNothingRuns) {
    start("a.txt").finish();
    start("b.txt").fail();

    store.clearFinished();

    EXPECT_TRUE(store.items().empty());
}

TEST_F(DownloadStoreTest, ClearFinishedIsToldOnceAndOnlyIfSomethingWent) {
    start("a.txt").finish();
    start("b.txt").finish();
    start("c.txt");
    int told = 0;
    store.connectChanged([&] { ++told; });

    store.clearFinished();
    store.clearFinished();

    EXPECT_EQ(told, 1);
}

TEST_F(DownloadStoreTest, EachStepIsToldOnceByTheItemAndByTheStore) {
    FakeDownload& download = start();
    int item = 0;
    int all = 0;
    newest().connectChanged([&] { ++item; });
    store.connectChanged([&] { ++all; });

    static_cast<void>(download.decide("a.txt"));
    download.progress(0.5);
    download.progress(0.5);
    download.finish();

    EXPECT_EQ(item, 3);
    EXPECT_EQ(all, 3);
}

TEST_F(DownloadStoreTest, AnObserverMayClearTheListAtOnce) {
    FakeDownload& download = start("a.txt");
    store.connectChanged([&] { store.clearFinished(); });

    download.finish();

    EXPECT_TRUE(store.items().empty());
    EXPECT_TRUE(folder.exists("/Downloads/a.txt"));
    EXPECT_TRUE(facts.back().ended);
}

TEST_F(DownloadStoreTest, AnObserverMayClearWhatItCancels) {
    start("a.txt");
    store.connectChanged([&] { store.clearFinished(); });

    newest().cancel();

    EXPECT_TRUE(store.items().empty());
    EXPECT_EQ(facts.back().cancels, 1);
    EXPECT_EQ(folder.places, 0);
}

TEST_F(DownloadStoreTest, AFileIsShownWhereItIs) {
    start("a.txt");
    newest().showInFinder();
    start();
    newest().showInFinder();

    EXPECT_EQ(workspace.shown, (std::vector<std::string>{"/Downloads/a.txt"}));
}

TEST_F(DownloadStoreTest, EveryViewOfTheStoreSeesTheSameList) {
    int first = 0;
    int second = 0;
    store.connectChanged([&] { first = static_cast<int>(store.items().size()); });
    store.connectChanged([&] { second = static_cast<int>(store.items().size()); });

    start();
    start();

    EXPECT_EQ(first, 2);
    EXPECT_EQ(second, 2);
}

TEST_F(DownloadStoreTest, WhatRunsAtTheEndOfTheStoreEndsWithoutLeavingAnything) {
    FakeDownload::Facts fact;
    {
        DownloadStore brief{folder, workspace};
        auto download = std::make_unique<FakeDownload>(fact);
        FakeDownload& started = *download;
        brief.add(std::move(download));
        static_cast<void>(started.decide("a.txt"));
        ASSERT_EQ(folder.places, 1);
    }

    EXPECT_TRUE(fact.ended);
    EXPECT_EQ(folder.places, 0);
    EXPECT_TRUE(folder.files.empty());
}

}  // namespace
}  // namespace orvu
