#include "shell/pagearea/FullscreenNotice.h"

#include "fakes/VirtualMainLoop.h"

#include <gtest/gtest.h>

namespace orvu {
namespace {

using namespace std::chrono_literals;

class FullscreenNoticeTest : public testing::Test {
protected:
    VirtualMainLoop loop;
    FullscreenNotice notice{loop};
};

TEST_F(FullscreenNoticeTest, NamesTheHostAndTheWayOutForFiveSeconds) {
    notice.begin("a.example");
    EXPECT_TRUE(notice.isShown());
    EXPECT_EQ(notice.text(), "a.example fills the screen. Press Esc to leave.");

    loop.advance(4999ms);
    EXPECT_TRUE(notice.isShown());
    loop.advance(1ms);
    EXPECT_FALSE(notice.isShown());
}

TEST_F(FullscreenNoticeTest, APageWithoutAHostHasAName) {
    notice.begin("");

    EXPECT_EQ(notice.text(), "This page fills the screen. Press Esc to leave.");
}

TEST_F(FullscreenNoticeTest, ComesAgainWhenThePointerRestsAtTheTop) {
    notice.begin("a.example");
    loop.advance(5000ms);

    notice.pointerMoved(3);
    loop.advance(299ms);
    EXPECT_FALSE(notice.isShown());
    notice.pointerMoved(2);
    loop.advance(1ms);
    EXPECT_TRUE(notice.isShown());
    loop.advance(5000ms);
    EXPECT_FALSE(notice.isShown());
}

TEST_F(FullscreenNoticeTest, APointerThatPassesTheTopBringsNothing) {
    notice.begin("a.example");
    loop.advance(5000ms);

    notice.pointerMoved(0);
    loop.advance(200ms);
    notice.pointerMoved(40);
    loop.advance(1000ms);

    EXPECT_FALSE(notice.isShown());
}

TEST_F(FullscreenNoticeTest, BeginningAnewShowsItAnewForTheWholeTime) {
    notice.begin("a.example");
    loop.advance(4000ms);
    notice.end();
    EXPECT_FALSE(notice.isShown());

    notice.begin("b.example");
    loop.advance(4000ms);

    EXPECT_TRUE(notice.isShown());
    EXPECT_TRUE(notice.text().starts_with("b.example"));
}

TEST_F(FullscreenNoticeTest, NothingShowsOnceTheScreenIsGivenBack) {
    notice.begin("a.example");
    notice.end();

    notice.pointerMoved(0);
    loop.advance(10s);

    EXPECT_FALSE(notice.isShown());
    EXPECT_EQ(loop.pendingTimers(), 0U);
}

TEST_F(FullscreenNoticeTest, EachComingAndGoingIsToldOnce) {
    int changes = 0;
    notice.connectChanged([&] { ++changes; });

    notice.begin("a.example");
    notice.begin("b.example");
    notice.end();
    notice.end();

    EXPECT_EQ(changes, 2);
}

}  // namespace
}  // namespace orvu
