#include "look/Contrast.h"
#include "look/Desk.h"
#include "look/drawing/NotchShape.h"
#include "look/gallery/Stage.h"
#include "look/view/DotFaceView.h"
#include "look/drawing/view/BrowserLoadingDots.h"
#include "look/drawing/view/DottedPaperView.h"
#include "look/drawing/view/Drawing.h"

#include <gtest/gtest.h>

namespace orvu {

void PrintTo(Color color, std::ostream* out) {
    *out << int{color.red} << ',' << int{color.green} << ',' << int{color.blue};
}

namespace {

bool isNear(Color one, Color other) {
    const auto close = [](int a, int b) { return std::abs(a - b) <= 1; };
    return close(one.red, other.red) && close(one.green, other.green) &&
           close(one.blue, other.blue);
}

/// What a dot looks like on a picture's black.
Color onBlack(Paint paint) { return blend(paint, {0, 0, 0}); }

class DotFaceDrawing : public testing::Test {
protected:
    static constexpr int dot = 10;
    static constexpr int gap = 4;
    static constexpr int width = 178;
    static constexpr int height = 150;

    Date now{2.0 / 9};
    DotFaceView face{dot, gap, [this] { return now; }};
    Animations animations{true};

    /// The colour in the middle of a dot.
    Color dotAt(const Picture& picture, int column, int row) const {
        return picture.at((dot + gap) * column + dot / 2, (dot + gap) * row + dot / 2);
    }
};

TEST_F(DotFaceDrawing, IsAsLargeAsItsDotsAndTheGapsBetween) {
    int minimum = 0;
    int natural = 0;
    int ignored = 0;

    face.measure(Gtk::Orientation::HORIZONTAL, -1, minimum, natural, ignored, ignored);
    EXPECT_EQ(natural, width);

    face.measure(Gtk::Orientation::VERTICAL, -1, minimum, natural, ignored, ignored);
    EXPECT_EQ(natural, height);
}

TEST_F(DotFaceDrawing, EachMoodDrawsItsCells) {
    const Stage stage{face};
    for (const Mood mood : allMoods) {
        face.setMood(mood);

        const Picture picture = Stage::draw(face, width, height);

        picture.keep("face-" + std::string{rawValue(mood)});
        const auto cells = DotFaceModel::cells(mood, 2, 0);
        for (int i = 0; i < DotFaceModel::columns * DotFaceModel::rows; ++i) {
            const DotCell& cell = cells[static_cast<std::size_t>(i)];
            const Color expected = onBlack({cell.accent ? Desk::sky : Desk::white, cell.opacity});
            const Color found =
                dotAt(picture, i % DotFaceModel::columns, i / DotFaceModel::columns);
            ASSERT_TRUE(isNear(found, expected)) << rawValue(mood) << " dot " << i;
        }
    }
}

TEST_F(DotFaceDrawing, BetweenTheDotsIsNothing) {
    const Stage stage{face};

    const Picture picture = Stage::draw(face, width, height);

    EXPECT_EQ(picture.at(dot + gap / 2, dot + gap / 2), (Color{0, 0, 0}));
    EXPECT_EQ(picture.at(12, 75), (Color{0, 0, 0}));
}

TEST_F(DotFaceDrawing, CheeksHaveTheAccentOfTheWindow) {
    const Stage stage{face};
    face.setMood(Mood::happy);
    dynamic_cast<Gtk::Widget&>(*face.get_root()).add_css_class("look-5");

    const Picture picture = Stage::draw(face, width, height);

    EXPECT_TRUE(isNear(dotAt(picture, 2, 6), {255, 94, 91}));
}

TEST_F(DotFaceDrawing, AReactionShowsUntilItsTime) {
    const Stage stage{face};
    face.setReaction(MoodReaction{Mood::happy, Date{2}});
    EXPECT_TRUE(isNear(dotAt(Stage::draw(face, width, height), 2, 6), Desk::sky));

    now = Date{2};

    EXPECT_FALSE(isNear(dotAt(Stage::draw(face, width, height), 2, 6), Desk::sky));
}

TEST_F(DotFaceDrawing, ARevealComesInAsARing) {
    const Stage stage{face};
    now = Date{10 + 4.5 / 6.8};
    face.setRevealFrom(Date{10});

    const Picture picture = Stage::draw(face, width, height);

    picture.keep("face-reveal");
    EXPECT_TRUE(isNear(dotAt(picture, 6, 9), Desk::sky));
    EXPECT_TRUE(isNear(dotAt(picture, 0, 5), onBlack({Desk::white, 0.07})));
}

TEST_F(DotFaceDrawing, WithoutAnimationsItStandsStillWithOpenEyes) {
    const Stage stage{face};
    Animations::setting() = false;
    face.setRevealFrom(Date{0});
    now = Date{0};

    const Picture picture = Stage::draw(face, width, height);

    EXPECT_TRUE(isNear(dotAt(picture, 4, 4), onBlack({Desk::white, 0.07})));
    EXPECT_GT(dotAt(picture, 5, 4).red, 130);
}

TEST_F(DotFaceDrawing, IsOneImageCalledKesto) {
    GtkAccessible* const accessible = GTK_ACCESSIBLE(face.Gtk::Widget::gobj());

    EXPECT_EQ(gtk_accessible_get_accessible_role(accessible), GTK_ACCESSIBLE_ROLE_IMG);
    EXPECT_EQ(
        gtk_test_accessible_check_property(accessible, GTK_ACCESSIBLE_PROPERTY_LABEL, "Kesto"),
        nullptr);
}

class DottedPaperDrawing : public testing::TestWithParam<int> {};

TEST_P(DottedPaperDrawing, HasADotOnEachPointOfTheGridAndNothingElse) {
    DottedPaperView paper{{Desk::white, 0.12}};
    paper.set_size_request(110, 70);
    const Stage stage{paper};
    ASSERT_EQ(paper.get_width(), 110);
    const int scale = GetParam();

    const Picture picture = Stage::draw(paper, 110, 70, scale);

    picture.keep("paper-" + std::to_string(scale));
    // 90 and 50 are the last dots: those at 110 and at 70 would stand on the edge.
    for (int y = 0; y < 70 * scale; ++y) {
        for (int x = 0; x < 110 * scale; ++x) {
            const auto offset = [&](int place) { return (place + 10 * scale) % (20 * scale); };
            const bool near = (offset(x) < scale || offset(x) >= 19 * scale) &&
                              (offset(y) < scale || offset(y) >= 19 * scale);
            const bool inside = x < 100 * scale && y < 60 * scale;
            if (!near || !inside) {
                ASSERT_EQ(picture.at(x, y), (Color{0, 0, 0})) << x << ' ' << y;
            }
        }
    }
    for (const PathPoint dot : DottedPaper::grid.centres(110, 70)) {
        const auto pixel =
            picture.at(static_cast<int>(dot.x) * scale, static_cast<int>(dot.y) * scale);
        EXPECT_GT(pixel.red, 18) << dot.x << ' ' << dot.y;
        EXPECT_LE(pixel.red, 31) << dot.x << ' ' << dot.y;
    }
}
INSTANTIATE_TEST_SUITE_P(Scales, DottedPaperDrawing, testing::Values(1, 2, 3));

TEST(DottedPaperDrawingTest, AGroundLiesBelowTheDots) {
    DottedPaperView paper{{Desk::ink, 0.5}};
    paper.set_size_request(60, 60);
    paper.setGround(Desk::paper);
    const Stage stage{paper};

    const Picture picture = Stage::draw(paper, 60, 60, 2);

    picture.keep("paper-ground");
    EXPECT_EQ(picture.at(0, 0), Desk::paper);
    EXPECT_EQ(picture.at(119, 119), Desk::paper);
    EXPECT_TRUE(isNear(picture.at(20, 20), blend({Desk::ink, 0.5}, Desk::paper)));
}

/// A row of loading dots at a time of the test's.
class LoadingDotsDrawing : public testing::Test {
protected:
    static constexpr int width = 100;
    static constexpr int scale = 4;

    LoadingDotsDrawing() {
        dots.set_size_request(width, -1);
        dots.set_halign(Gtk::Align::START);
        dots.set_valign(Gtk::Align::START);
    }
    /// The colour in the middle of the first dot at `seconds`.
    Color firstDot(double seconds) {
        now = Date{seconds};
        return Stage::draw(dots, width, 2, scale).at(scale, scale);
    }

    Date now{0};
    BrowserLoadingDots dots{10, [this] { return now; }};
};

TEST_F(LoadingDotsDrawing, AWaveRunsAlongThem) {
    const Animations animations{true};
    const Stage stage{dots};

    EXPECT_NE(firstDot(0.2), firstDot(0.7));
}

TEST_F(LoadingDotsDrawing, WithoutAnimationsTheyStandStillHoweverOftenTheyAreDrawn) {
    const Animations animations{false};
    const Stage stage{dots};

    EXPECT_TRUE(isNear(firstDot(0.2), onBlack({Desk::sky, LoadingDots::still})));
    EXPECT_EQ(firstDot(0.2), firstDot(0.7));
}

TEST_F(LoadingDotsDrawing, AnimationsSwitchedOffStopTheWaveWhereItIsSeen) {
    const Animations animations{true};
    const Stage stage{dots};

    Animations::setting() = false;

    EXPECT_EQ(firstDot(0.2), firstDot(0.7));
}

Picture notch(const std::string& name, NotchShape shape, double width, double height) {
    Picture picture{static_cast<int>(width), static_cast<int>(height) + 10};
    const auto context = Cairo::Context::create(picture.surface());
    addPath(context, shape.outline(width, height));
    setSource(context, {Desk::sky});
    context->fill();
    picture.keep("notch-" + name);
    return picture;
}

TEST(NotchDrawing, FlaresIntoTheTopEdge) {
    const Picture picture = notch("rest", {.bottomRadius = 14, .ear = 10}, 300, 42);

    EXPECT_EQ(picture.at(150, 20), Desk::sky);
    EXPECT_EQ(picture.at(8, 0), Desk::sky) << "within the ear";
    EXPECT_EQ(picture.at(2, 8), (Color{0, 0, 0})) << "below the ear";
    EXPECT_EQ(picture.at(297, 8), (Color{0, 0, 0}));
    EXPECT_EQ(picture.at(11, 41), (Color{0, 0, 0})) << "outside the corner";
    EXPECT_EQ(picture.at(150, 43), (Color{0, 0, 0}));
}

TEST(NotchDrawing, IsTheSameFromBothSides) {
    const Picture picture = notch("open", {.bottomRadius = 30, .ear = 12}, 400, 180);

    for (int y = 0; y < 180; ++y) {
        for (int x = 0; x < 200; ++x) {
            // Edges are smoothed in steps, which need not be the same from both sides.
            const int difference = picture.at(x, y).blue - picture.at(399 - x, y).blue;
            ASSERT_LE(std::abs(difference), 24) << x << ' ' << y;
        }
    }
}

TEST(NotchDrawing, WithoutEarsItsTopCornersAreSquare) {
    const Picture picture = notch("square", {.bottomRadius = 14, .ear = 0}, 200, 42);

    EXPECT_EQ(picture.at(0, 0), Desk::sky);
    EXPECT_EQ(picture.at(199, 0), Desk::sky);
}

}  // namespace
}  // namespace orvu
