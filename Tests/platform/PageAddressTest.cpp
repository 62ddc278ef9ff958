#include "platform/PageAddress.h"

#include <gtest/gtest.h>

#include <random>

namespace orvu {
namespace {

const Url a = *Url::parse("https://a.example/");
const Url b = *Url::parse("https://b.example/");
const Url moved = *Url::parse("https://a.example/#there");

class PageAddressTest : public testing::Test {
protected:
    /// A load that shows its document.
    void show(const Url& url) {
        static_cast<void>(address.asked(url));
        address.committed();
    }

    PageAddress address;
};

TEST_F(PageAddressTest, AFreshViewHasNone) {
    EXPECT_EQ(address.url(), std::nullopt);
    EXPECT_EQ(address.document(), std::nullopt);
    EXPECT_EQ(address.unshown(), std::nullopt);
}

TEST_F(PageAddressTest, TheAddressIsKnownAsSoonAsItIsAskedFor) {
    EXPECT_TRUE(address.asked(a));
    EXPECT_FALSE(address.asked(a));

    EXPECT_EQ(address.url(), a);
    EXPECT_EQ(address.document(), std::nullopt);
}

TEST_F(PageAddressTest, ALoadThatNeverShowedAPageLeavesTheAddressThatWasAskedFor) {
    static_cast<void>(address.asked(a));

    EXPECT_FALSE(address.engineMoved(std::nullopt, false));
    EXPECT_FALSE(address.ended());

    EXPECT_EQ(address.url(), a);
    EXPECT_EQ(address.unshown(), a);
}

TEST_F(PageAddressTest, ARedirectThatFailsLeavesWhatWasAskedFor) {
    static_cast<void>(address.asked(a));
    static_cast<void>(address.engineMoved(b, true));

    EXPECT_TRUE(address.engineMoved(std::nullopt, true));

    EXPECT_EQ(address.url(), a);
}

TEST_F(PageAddressTest, WhereADocumentStandsAFailedLoadPutsItsAddressBack) {
    show(a);
    static_cast<void>(address.asked(b));
    EXPECT_EQ(address.url(), b);

    EXPECT_TRUE(address.ended());

    EXPECT_EQ(address.url(), a);
    EXPECT_EQ(address.unshown(), std::nullopt);
}

TEST_F(PageAddressTest, AfterACrashTheDocumentsAddressStays) {
    show(a);

    EXPECT_FALSE(address.engineMoved(std::nullopt, false));

    EXPECT_EQ(address.url(), a);
}

TEST_F(PageAddressTest, AMoveWithinTheDocumentIsTheDocumentsAddress) {
    show(a);

    EXPECT_TRUE(address.engineMoved(moved, false));
    static_cast<void>(address.asked(b));
    static_cast<void>(address.ended());

    EXPECT_EQ(address.url(), moved);
}

TEST_F(PageAddressTest, AFirstLoadThatBecomesADownloadLeavesAnEmptyTab) {
    static_cast<void>(address.asked(a));

    EXPECT_TRUE(address.becameDownload());

    EXPECT_EQ(address.url(), std::nullopt);
    EXPECT_EQ(address.unshown(), std::nullopt);
}

TEST_F(PageAddressTest, ALaterLoadThatBecomesADownloadLeavesTheDocument) {
    show(a);
    static_cast<void>(address.asked(b));

    EXPECT_TRUE(address.becameDownload());

    EXPECT_EQ(address.url(), a);
}

TEST_F(PageAddressTest, WhateverHappensAnAddressThatWasAskedForIsNeverLostButToADownload) {
    std::mt19937 random{7};
    for (int round = 0; round < 200; ++round) {
        PageAddress traced;
        bool isAsked = false;
        for (int step = 0; step < 30; ++step) {
            const auto before = traced.url();
            bool changed = false;
            switch (random() % 6) {
                case 0:
                    changed = traced.asked(random() % 2 == 0 ? a : b);
                    isAsked = true;
                    break;
                case 1:
                    if (!isAsked) continue;  // the engine moves to what it was asked for
                    changed = traced.engineMoved(random() % 2 == 0 ? a : b, true);
                    break;
                case 2:
                    changed = traced.engineMoved(std::nullopt, random() % 2 == 0);
                    break;
                case 3:
                    if (!traced.url()) continue;  // nothing commits without an address
                    traced.committed();
                    EXPECT_EQ(traced.document(), traced.url());
                    break;
                case 4:
                    changed = traced.ended();
                    break;
                default:
                    changed = traced.becameDownload();
                    isAsked = traced.document().has_value();
                    break;
            }
            EXPECT_EQ(changed, traced.url() != before);
            EXPECT_EQ(traced.url().has_value(), isAsked);
            EXPECT_FALSE(traced.document() && traced.unshown());
        }
    }
}

}  // namespace
}  // namespace orvu
