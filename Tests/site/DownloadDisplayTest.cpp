#include "site/downloads/DownloadDisplay.h"

#include "fakes/FakeDownload.h"
#include "fakes/FakeDownloadFolder.h"
#include "fakes/FakeWorkspace.h"

#include <gtest/gtest.h>

namespace orvu {
namespace {

class DownloadDisplayTest : public testing::Test {
protected:
    DownloadDisplayTest() {
        auto made = std::make_unique<FakeDownload>(facts);
        download = made.get();
        item = std::make_shared<DownloadItem>(
            std::move(made), DownloadContext{folder, workspace, [](const auto&) { return false; }});
        static_cast<void>(download->decide("report.pdf"));
    }

    FakeDownload::Facts facts;
    FakeDownloadFolder folder;
    FakeWorkspace workspace;
    FakeDownload* download = nullptr;
    std::shared_ptr<DownloadItem> item;
};

TEST_F(DownloadDisplayTest, TheRingOfOneThatBeginsIsSeenAlready) {
    EXPECT_EQ(DownloadDisplay::ringFraction(*item), 0.05);

    download->progress(0.04);
    EXPECT_EQ(DownloadDisplay::ringFraction(*item), 0.05);

    download->progress(0.5);
    EXPECT_EQ(DownloadDisplay::ringFraction(*item), 0.5);
}

TEST_F(DownloadDisplayTest, TheRingIsNeverMoreThanWhole) {
    download->progress(1.5);

    EXPECT_EQ(DownloadDisplay::ringFraction(*item), 1);
}

TEST_F(DownloadDisplayTest, EachStateHasItsWords) {
    EXPECT_EQ(DownloadDisplay::status(DownloadItem::State::running), "");
    EXPECT_EQ(DownloadDisplay::status(DownloadItem::State::done), "Done");
    EXPECT_EQ(DownloadDisplay::status(DownloadItem::State::failed), "Couldn't finish");
    EXPECT_EQ(DownloadDisplay::status(DownloadItem::State::cancelled), "Cancelled");
}

TEST_F(DownloadDisplayTest, ARowIsSpokenWithItsNameAndHowFarItIs) {
    download->progress(0.409);
    EXPECT_EQ(DownloadDisplay::spoken(*item), "report.pdf, 40 %");

    download->finish();
    EXPECT_EQ(DownloadDisplay::spoken(*item), "report.pdf, Done");
}

}  // namespace
}  // namespace orvu
