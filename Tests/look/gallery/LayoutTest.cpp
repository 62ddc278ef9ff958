#include "look/layout/view/FirstInFull.h"

#include <gtest/gtest.h>
#include <gtkmm/label.h>

#include <string>

namespace orvu {
namespace {

class FirstInFullTest : public testing::Test {
protected:
    FirstInFullTest() {
        first.set_ellipsize(Pango::EllipsizeMode::START);
        second.set_ellipsize(Pango::EllipsizeMode::END);
    }
    void show(const std::string& firstText, const std::string& secondText, int width) {
        first.set_text(firstText);
        second.set_text(secondText);
        int ignored = 0;
        int height = 0;
        box.measure(Gtk::Orientation::HORIZONTAL, -1, ignored, ignored, ignored, ignored);
        box.measure(Gtk::Orientation::VERTICAL, -1, ignored, height, ignored, ignored);
        box.size_allocate({0, 0, width, height}, -1);
    }
    [[nodiscard]] static bool isCut(Gtk::Label& label) {
        return label.get_layout()->is_ellipsized();
    }

    Gtk::Label first;
    Gtk::Label second;
    FirstInFull box{first, second};
};

TEST_F(FirstInFullTest, WhereThereIsRoomBothStandWhole) {
    show("site.example", "/path", 400);

    EXPECT_FALSE(isCut(first));
    EXPECT_FALSE(isCut(second));
    EXPECT_TRUE(second.get_child_visible());
}

TEST_F(FirstInFullTest, TheSecondGivesWayFirst) {
    show("site.example", "/" + std::string(500, 'p'), 200);

    EXPECT_FALSE(isCut(first));
    EXPECT_TRUE(isCut(second));
    EXPECT_EQ(first.get_width() + second.get_width(), 200);
}

TEST_F(FirstInFullTest, OnlyWhatIsTooLongByItselfIsCut) {
    show("bank.example." + std::string(230, 'x') + ".evil.example", "/path", 200);

    EXPECT_TRUE(isCut(first));
    EXPECT_EQ(first.get_width(), 200);
    EXPECT_FALSE(second.get_child_visible());
    // Of what is drawn the last letters are those of the end: the head went.
    const auto layout = first.get_layout();
    int index = 0;
    int trailing = 0;
    layout->xy_to_index(layout->get_pixel_logical_extents().get_width() * PANGO_SCALE - PANGO_SCALE,
                        0, index, trailing);
    EXPECT_GE(index, static_cast<int>(first.get_text().bytes()) - 1);
}

TEST_F(FirstInFullTest, WithoutAnyRoomNothingBreaks) {
    show("site.example", "/path", 0);
    show("", "", 0);
    first.set_visible(false);
    show("site.example", "prompt", 300);

    EXPECT_EQ(second.get_width(), 300);
}

}  // namespace
}  // namespace orvu
