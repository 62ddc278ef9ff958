#include "look/gallery/Stage.h"

#include <gtest/gtest.h>
#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/stylecontext.h>

namespace orvu {
namespace {

/// A box that goes by the name of the engine's view.
Gtk::Box& makePageLike(Gtk::Box& parent) {
    static const GType type = g_type_register_static_simple(
        GTK_TYPE_BOX, "PageLike", sizeof(GtkBoxClass),
        [](gpointer klass, gpointer) {
            gtk_widget_class_set_css_name(GTK_WIDGET_CLASS(klass), "webkitwebview");
        },
        sizeof(GtkBox), nullptr, G_TYPE_FLAG_NONE);
    auto* const box = static_cast<GtkWidget*>(g_object_new(type, nullptr));
    gtk_box_append(parent.gobj(), box);
    return *Glib::wrap(GTK_BOX(box));
}

/// Whether the desktop's theme reaches a button: without it there is no room around its label.
bool hasTheme(const Gtk::Button& button) {
    const auto padding = button.get_style_context()->get_padding();
    return padding.get_left() > 0 && padding.get_top() > 0;
}

class StyleTest : public testing::Test {
protected:
    Gtk::Box box;
    Gtk::Button button;
};

TEST_F(StyleTest, NothingOfTheDesktopsThemeReachesOurOwn) {
    box.append(button);
    const Stage stage{box};

    EXPECT_FALSE(hasTheme(button));
}

TEST_F(StyleTest, NorDoesItDeepInAWindow) {
    Gtk::Box* inner = &box;
    for (int depth = 0; depth < 50; ++depth) {
        auto* const next = Gtk::make_managed<Gtk::Box>();
        inner->append(*next);
        inner = next;
    }
    inner->append(button);
    const Stage stage{box};

    EXPECT_FALSE(hasTheme(button));
    inner->remove(button);
}

TEST_F(StyleTest, WhatTheEnginePutsOverAPageKeepsIt) {
    Gtk::Box& page = makePageLike(box);
    page.append(button);
    const Stage stage{box};

    EXPECT_TRUE(hasTheme(button));
    page.remove(button);
}

TEST_F(StyleTest, SoDoesWhatLiesDeepInThat) {
    auto* const inner = Gtk::make_managed<Gtk::Box>();
    makePageLike(box).append(*inner);
    inner->append(button);
    const Stage stage{box};

    EXPECT_TRUE(hasTheme(button));
    inner->remove(button);
}

TEST_F(StyleTest, AWindowThatIsNotOursKeepsIt) {
    Gtk::Window window;
    window.set_child(button);

    EXPECT_TRUE(hasTheme(button));
    window.unset_child();
}

}  // namespace
}  // namespace orvu
