#include "look/controls/IconButtonStyle.h"
#include "look/controls/PillButtonStyle.h"
#include "look/gallery/Stage.h"
#include "look/view/SymbolImage.h"

#include <gtest/gtest.h>
#include <gtkmm/box.h>
#include <gtkmm/button.h>

namespace orvu {
namespace {

bool isNear(Color one, Color other) {
    const auto close = [](int a, int b) { return std::abs(a - b) <= 1; };
    return close(one.red, other.red) && close(one.green, other.green) &&
           close(one.blue, other.blue);
}

Color onBlack(Paint paint) { return blend(paint, {0, 0, 0}); }

Gtk::Button* pill(const char* kind) {
    auto* const button = Gtk::make_managed<Gtk::Button>("Continue");
    button->add_css_class("pill");
    button->add_css_class(kind);
    button->set_halign(Gtk::Align::START);
    button->set_valign(Gtk::Align::START);
    return button;
}

Gtk::Button* iconButton(bool active) {
    auto* const button = Gtk::make_managed<Gtk::Button>();
    auto* const image = Gtk::make_managed<Gtk::Image>();
    setSymbol(*image, "plus", IconButtonStyle::symbolSize);
    button->set_child(*image);
    button->add_css_class("icon-button");
    if (active) button->add_css_class("active");
    button->set_halign(Gtk::Align::START);
    button->set_valign(Gtk::Align::START);
    return button;
}

/// Draws a row of buttons: as they are, pressed, switched off.
TEST(ButtonsDrawing, AllKindsInAllStates) {
    const std::array<std::function<Gtk::Button*()>, 5> kinds{
        [] { return pill("prominent"); }, [] { return pill("plain"); },
        [] { return pill("quiet"); }, [] { return iconButton(false); },
        [] { return iconButton(true); }};
    Gtk::Box rows{Gtk::Orientation::VERTICAL, 10};
    rows.set_margin(10);
    for (int state = 0; state < 3; ++state) {
        auto* const row = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, 10);
        for (const auto& make : kinds) {
            Gtk::Button* const button = make();
            if (state == 1) button->set_state_flags(Gtk::StateFlags::ACTIVE, false);
            if (state == 2) button->set_sensitive(false);
            row->append(*button);
        }
        rows.append(*row);
    }
    const Stage stage{rows};

    const Picture picture = Stage::draw(rows, rows.get_width(), rows.get_height(), 2);

    picture.keep("buttons");
    EXPECT_GT(rows.get_width(), 300);
}

class PillDrawing : public testing::Test {
protected:
    Gtk::Box box;
    Gtk::Button* add(const char* kind) {
        Gtk::Button* const button = pill(kind);
        box.append(*button);
        return button;
    }
};

TEST_F(PillDrawing, IsThirtyPixelsHighAndFourteenWiderOnEachSide) {
    Gtk::Button* const button = add("plain");
    const Stage stage{box};

    EXPECT_EQ(button->get_height(), PillButtonStyle::height);
    EXPECT_EQ(button->get_allocated_width(),
              button->get_child()->get_width() + 2 * PillButtonStyle::margin);
}

TEST_F(PillDrawing, HasTheGroundOfItsKind) {
    using enum PillButtonStyle::Kind;
    for (const auto& [name, kind] :
         {std::pair{"prominent", prominent}, {"plain", plain}, {"quiet", quiet}}) {
        Gtk::Box own;
        Gtk::Button* const button = pill(name);
        own.append(*button);
        const Stage stage{own};

        const Picture picture = Stage::draw(*button, button->get_allocated_width(), 30);

        EXPECT_TRUE(isNear(picture.at(30, 3), onBlack(PillButtonStyle{kind}.ground()))) << name;
        EXPECT_EQ(picture.at(0, 0), (Color{0, 0, 0})) << "a capsule has round ends";
    }
}

TEST_F(PillDrawing, ItsLabelHasTheColourOfTheBestContrast) {
    for (const char* const kind : {"prominent", "plain", "quiet"}) {
        Gtk::Box own;
        Gtk::Button* const button = pill(kind);
        own.append(*button);
        const Stage stage{own};

        const Gdk::RGBA color = button->get_child()->get_style_context()->get_color();

        const bool white = std::string_view{kind} != "prominent";
        EXPECT_EQ(color.to_string(), white ? "rgb(255,255,255)" : "rgb(4,18,31)") << kind;
    }
}

TEST_F(PillDrawing, AProfilesWindowHasItsOwnAccent) {
    Gtk::Button* const button = add("prominent");
    Stage stage{box};
    stage.window().add_css_class("look-7");

    const Picture picture = Stage::draw(*button, button->get_allocated_width(), 30);

    EXPECT_TRUE(isNear(picture.at(30, 3), Color{155, 107, 255}));
}

TEST_F(PillDrawing, PressedItIsSmallerAsAWhole) {
    Gtk::Button* const button = add("prominent");
    const Stage stage{box};
    const int width = button->get_allocated_width();
    const auto leftmost = [&] {
        const Picture picture = Stage::draw(box, width, 30, 10);
        int x = 0;
        while (x < width * 10 && picture.at(x, 150) == Color{0, 0, 0}) ++x;
        return x / 10.0;
    };
    EXPECT_NEAR(leftmost(), 0, 0.1);

    button->set_state_flags(Gtk::StateFlags::ACTIVE, false);

    EXPECT_NEAR(leftmost(), width * (1 - PillButtonStyle::pressedScale) / 2, 0.15);
}

TEST(IconButtonDrawing, IsASquareWithTheGroundOfItsState) {
    for (const bool active : {false, true}) {
        Gtk::Box box;
        Gtk::Button* const button = iconButton(active);
        box.append(*button);
        const Stage stage{box};
        EXPECT_EQ(button->get_height(), 30);
        EXPECT_EQ(button->get_width(), 30);

        const Picture picture = Stage::draw(*button, 30, 30);

        const IconButtonStyle style{.active = active};
        EXPECT_TRUE(isNear(picture.at(15, 2), onBlack(style.ground()))) << active;
        EXPECT_FALSE(isNear(picture.at(15, 15), onBlack(style.ground()))) << active;
        const Gdk::RGBA color = button->get_child()->get_style_context()->get_color();
        EXPECT_EQ(color.to_string(), active ? "rgb(4,18,31)" : "rgba(255,255,255,0.8)");
    }
}

}  // namespace
}  // namespace orvu
