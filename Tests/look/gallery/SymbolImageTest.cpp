#include "look/view/SymbolImage.h"

#include <gdkmm/display.h>
#include <gtest/gtest.h>
#include <gtkmm/icontheme.h>

namespace orvu {
namespace {

TEST(SymbolImageTest, ShowsTheSymbolsIconAtTheSize) {
    Gtk::Image image;

    setSymbol(image, "plus", 13);

    EXPECT_EQ(image.get_icon_name(), "plus-bold-symbolic");
    EXPECT_EQ(image.get_pixel_size(), 13);
}

TEST(SymbolImageTest, TheIconThemeKnowsTheIcon) {
    const auto theme = Gtk::IconTheme::get_for_display(Gdk::Display::get_default());

    EXPECT_TRUE(theme->has_icon("tortoise-fill-symbolic"));
    EXPECT_FALSE(theme->has_icon("tortoise-thin-symbolic"));
}

TEST(SymbolImageTest, AnUnknownSymbolShowsNothing) {
    Gtk::Image image;
    setSymbol(image, "plus", 13);

    setSymbol(image, "no.such.symbol", 13);

    EXPECT_EQ(image.get_storage_type(), Gtk::Image::Type::EMPTY);
}

TEST(SymbolImageTest, AssistiveTechnologyPassesOverIt) {
    Gtk::Image image;

    setSymbol(image, "plus", 13);

    EXPECT_EQ(gtk_test_accessible_check_state(GTK_ACCESSIBLE(image.gobj()),
                                              GTK_ACCESSIBLE_STATE_HIDDEN, TRUE),
              nullptr);
}

}  // namespace
}  // namespace orvu
