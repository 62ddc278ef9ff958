#include "look/gallery/Stage.h"
#include "look/view/DotFaceView.h"
#include "look/motion/view/SpringAnimation.h"
#include "look/motion/view/WindowTicker.h"

#include <glibmm/main.h>
#include <gtest/gtest.h>
#include <gtkmm/box.h>

#include <cmath>
#include <vector>

namespace orvu {
namespace {

class SpringAnimationTest : public testing::Test {
protected:
    Animations animations{true};
    Gtk::Box box;
    Stage stage{box};
    std::vector<double> steps;
    SpringAnimation animation{box, Motion::snappy, 0,
                              [this](double value) { steps.push_back(value); }};
};

TEST_F(SpringAnimationTest, RunsToItsEndAndLeavesNothingBehind) {
    animation.animateTo(1);
    EXPECT_TRUE(animation.isRunning());

    ASSERT_TRUE(waitUntil([&] { return !animation.isRunning(); }));

    EXPECT_EQ(animation.value(), 1);
    EXPECT_EQ(steps.back(), 1);
    EXPECT_GT(steps.size(), 5U);
    EXPECT_GT(*std::ranges::max_element(steps), 1) << "the spring swings beyond its end";
}

TEST_F(SpringAnimationTest, ANewTargetOnTheWayMakesNoJump) {
    animation.animateTo(1);
    ASSERT_TRUE(waitUntil([&] { return animation.value() > 0.3; }));
    const double before = animation.value();
    const std::size_t count = steps.size();

    animation.animateTo(-1);
    EXPECT_EQ(animation.value(), before);
    ASSERT_TRUE(waitUntil([&] { return steps.size() > count; }));

    // It was on its way up, and goes on for a little.
    ASSERT_TRUE(waitUntil([&] { return !animation.isRunning(); }));
    EXPECT_GT(*std::max_element(steps.begin() + static_cast<std::ptrdiff_t>(count), steps.end()),
              before);
    EXPECT_EQ(animation.value(), -1);
}

TEST_F(SpringAnimationTest, WithoutAnimationsItIsThereAtOnce) {
    Animations::setting() = false;

    animation.animateTo(1);

    EXPECT_FALSE(animation.isRunning());
    EXPECT_EQ(steps, std::vector<double>{1});
}

TEST_F(SpringAnimationTest, AnimationsSwitchedOffOnTheWayEndIt) {
    animation.animateTo(1);

    Animations::setting() = false;

    ASSERT_TRUE(waitUntil([&] { return !animation.isRunning(); }));
    EXPECT_EQ(steps, std::vector<double>{1});
}

TEST_F(SpringAnimationTest, AHiddenWidgetIsThereAtOnce) {
    animation.animateTo(1);
    ASSERT_TRUE(waitUntil([&] { return animation.value() > 0; }));

    box.set_visible(false);

    EXPECT_FALSE(animation.isRunning());
    EXPECT_EQ(animation.value(), 1);
    animation.animateTo(3);
    EXPECT_FALSE(animation.isRunning());
    EXPECT_EQ(animation.value(), 3);
}

TEST_F(SpringAnimationTest, AStepMayAskForAnotherTarget) {
    SpringAnimation there{box, Motion::snappy, 0, [&](double value) {
                              if (value == 1) there.animateTo(2);
                          }};

    there.animateTo(1);

    ASSERT_TRUE(waitUntil([&] { return there.value() == 2; }));
    EXPECT_FALSE(there.isRunning());
}

TEST_F(SpringAnimationTest, TheSameTargetIsNoMove) {
    animation.animateTo(0);

    EXPECT_FALSE(animation.isRunning());
    EXPECT_TRUE(steps.empty());
}

class WindowTickerTest : public testing::Test {
protected:
    Animations animations{true};
    Gtk::Box box;
    DotFaceView one{2, 1};
    DotFaceView two{2, 1};

    WindowTickerTest() {
        box.append(one);
        box.append(two);
    }
    std::shared_ptr<WindowTicker> ticker() {
        return WindowTicker::of(gtk_widget_get_root(GTK_WIDGET(box.gobj())));
    }
};

TEST_F(WindowTickerTest, OneTickerServesAllFacesOfAWindow) {
    Stage stage{box};

    EXPECT_TRUE(ticker()->isTicking());
    EXPECT_EQ(ticker().use_count(), 3) << "two faces and this";
}

TEST_F(WindowTickerTest, ItSleepsWhenTheLastFaceIsHidden) {
    Stage stage{box};
    const auto held = ticker();

    one.set_visible(false);
    EXPECT_TRUE(held->isTicking());
    two.set_visible(false);
    EXPECT_FALSE(held->isTicking());

    two.set_visible(true);
    EXPECT_TRUE(waitUntil([&] { return held->isTicking(); }));
}

TEST_F(WindowTickerTest, ItSleepsWithoutAnimations) {
    Stage stage{box};

    Animations::setting() = false;
    EXPECT_FALSE(ticker()->isTicking());
    Animations::setting() = true;
    EXPECT_TRUE(ticker()->isTicking());
}

TEST_F(WindowTickerTest, ItSleepsWhileTheWindowIsMinimised) {
    Stage stage{box};

    stage.window().minimize();
    ASSERT_TRUE(waitUntil([&] { return !ticker()->isTicking(); }));

    stage.window().present();
    EXPECT_TRUE(waitUntil([&] { return ticker()->isTicking(); }));
}

TEST_F(WindowTickerTest, AFaceIsDrawnAboutThirtyTimesASecond) {
    int drawn = 0;
    DotFaceView counting{2, 1, [&] {
                             ++drawn;
                             return Date{double(drawn)};
                         }};
    box.append(counting);
    Stage stage{box};
    const auto begin = g_get_monotonic_time();
    drawn = 0;

    ASSERT_TRUE(waitUntil([&] { return drawn >= 15; }));

    const double seconds = static_cast<double>(g_get_monotonic_time() - begin) / 1e6;
    EXPECT_GT(seconds, 15 * 0.033 * 0.8) << "not at each frame of the screen";
}

TEST_F(WindowTickerTest, AFaceThatEndsWhileMappedIsForgotten) {
    Stage stage{box};
    {
        DotFaceView brief{2, 1};
        box.append(brief);
        ASSERT_TRUE(waitUntil([&] { return brief.get_mapped(); }));
    }

    bool redrawn = false;
    const auto handle = Glib::signal_timeout().connect(
        [&] {
            redrawn = true;
            return false;
        },
        100);
    ASSERT_TRUE(waitUntil([&] { return redrawn; }));
    EXPECT_EQ(ticker().use_count(), 3);
}

}  // namespace
}  // namespace orvu
