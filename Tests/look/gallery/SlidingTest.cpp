#include "look/gallery/Stage.h"
#include "look/motion/view/SlidingBox.h"

#include <gtest/gtest.h>
#include <gtkmm/drawingarea.h>

namespace orvu {
namespace {

constexpr int lineHeight = 40;
constexpr int width = 50;
/// So that no busy machine misses the way.
constexpr Spring slow{Seconds{3}, 1};

class ColoredLine : public Gtk::DrawingArea {
public:
    explicit ColoredLine(double red, double green) {
        set_content_width(width);
        set_content_height(lineHeight);
        set_draw_func([red, green](const auto& context, int, int) {
            context->set_source_rgb(red, green, 0);
            context->paint();
        });
    }
};

class SlidingBoxTest : public testing::Test {
protected:
    SlidingBoxTest() {
        box.set_halign(Gtk::Align::START);
        box.set_valign(Gtk::Align::START);
        box.set_size_request(width, 2 * lineHeight);
        box.append(red);
        box.append(green);
        box.setKey(red, "red");
        box.setKey(green, "green");
    }
    [[nodiscard]] Color at(int y) { return Stage::draw(box, width, 2 * lineHeight).at(5, y); }
    [[nodiscard]] bool greenBelongsAtTop() {
        return green.get_allocation().get_y() == 0 && !red.get_visible();
    }

    Animations animations{true};
    SlidingBox box{slow, 0};
    ColoredLine red{1, 0};
    ColoredLine green{0, 1};
    Stage stage{box};
    static constexpr Color onlyRed{255, 0, 0};
    static constexpr Color onlyGreen{0, 255, 0};
};

TEST_F(SlidingBoxTest, ALineIsDrawnOnItsWayAndThenInItsPlace) {
    ASSERT_TRUE(waitUntil([&] { return at(lineHeight + 5) == onlyGreen; }));

    red.set_visible(false);

    ASSERT_TRUE(waitUntil([&] { return greenBelongsAtTop(); }));
    EXPECT_EQ(at(lineHeight + 5), onlyGreen) << "in its place, but not drawn there yet";
    ASSERT_TRUE(waitUntil([&] { return at(5) == onlyGreen && at(lineHeight + 5) != onlyGreen; }));
}

TEST_F(SlidingBoxTest, WithoutAnimationsALineIsInItsPlaceAtOnce) {
    ASSERT_TRUE(waitUntil([&] { return at(lineHeight + 5) == onlyGreen; }));
    Animations::setting() = false;

    red.set_visible(false);

    ASSERT_TRUE(waitUntil([&] { return greenBelongsAtTop(); }));
    EXPECT_EQ(at(5), onlyGreen);
    EXPECT_NE(at(lineHeight + 5), onlyGreen);
}

TEST_F(SlidingBoxTest, AWidgetThatGetsAnotherKeyIsAnotherLine) {
    ASSERT_TRUE(waitUntil([&] { return at(5) == onlyRed; }));

    box.setKey(red, "other");

    EXPECT_NE(at(5), onlyRed) << "the new line is still to fade in";
    ASSERT_TRUE(waitUntil([&] { return at(5) == onlyRed; }));
}

}  // namespace
}  // namespace orvu
