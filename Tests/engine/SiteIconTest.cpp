#include "site/icons/view/SiteIcon.h"

#include "site/icons/SiteColor.h"
#include "engine/EngineWorld.h"
#include "fakes/FakeFileIO.h"
#include "fakes/FakeHttpSession.h"
#include "fakes/FakeImageCodec.h"
#include "site/icons/view/BrowserSiteBadge.h"

#include <gtkmm/init.h>
#include <gtkmm/window.h>

namespace orvu {
namespace {

constexpr int side = 40;

/// Icons in a window, read back pixel by pixel.
class SiteIconTest : public EngineTest {
protected:
    using Pixel = std::array<int, 4>;

    void SetUp() override {
        Gtk::init_gtkmm_internals();
        window = std::make_unique<Gtk::Window>();
    }
    void TearDown() override { window.reset(); }

    /// What the icon draws; the window shows it afterwards.
    [[nodiscard]] GObjectPointer<GdkTexture> drawn(SiteIcon& icon) {
        window->set_child(icon);
        window->present();
        EXPECT_TRUE(waitFor([&] { return icon.get_mapped() && icon.get_width() == side; }));
        const auto paintable =
            GObjectPointer<GdkPaintable>::adopt(gtk_widget_paintable_new(icon.Gtk::Widget::gobj()));
        GtkSnapshot* const snapshot = gtk_snapshot_new();
        gdk_paintable_snapshot(paintable.get(), snapshot, side, side);
        GskRenderNode* const node = gtk_snapshot_free_to_node(snapshot);
        auto* const renderer = gtk_native_get_renderer(GTK_NATIVE(window->gobj()));
        auto texture =
            GObjectPointer<GdkTexture>::adopt(gsk_renderer_render_texture(renderer, node, nullptr));
        gsk_render_node_unref(node);
        return texture;
    }
    [[nodiscard]] Pixel pixel(SiteIcon& icon, int x, int y) {
        const auto texture = drawn(icon);
        std::vector<std::uint8_t> bytes(side * side * 4);
        gdk_texture_download(texture.get(), bytes.data(), side * 4);
        const auto* const at = bytes.data() + (y * side + x) * 4;  // blue, green, red, alpha
        return {at[2], at[1], at[0], at[3]};
    }
    [[nodiscard]] static Pixel opaque(const Color& color) {
        return {color.red, color.green, color.blue, 255};
    }
    [[nodiscard]] static ImagePointer plain(std::uint8_t red) {
        auto image = std::make_shared<Image>(Image{2, 2, {}});
        for (int i = 0; i < 4; ++i) image->rgba.insert(image->rgba.end(), {red, 0, 0, 255});
        return image;
    }

    FakeHttpSession web;
    FakeImageCodec images;
    FakeFileIO disk;
    FaviconStore store{web, images, disk, "icons"};
    std::unique_ptr<Gtk::Window> window;
};

TEST_F(SiteIconTest, WithoutAnIconALetterStandsOnTheSitesColour) {
    SiteIcon icon{{store, Persistence::persistent}, side};
    icon.setHost("gnu.org");

    EXPECT_EQ(pixel(icon, side / 2, 2), opaque(SiteColor::of("gnu.org")));
    EXPECT_EQ(pixel(icon, 0, 0)[3], 0);
    if (const char* const target = std::getenv("ORVU_PICTURES")) {
        gdk_texture_save_to_png(drawn(icon).get(), (std::string{target} + "/letter.png").c_str());
    }
}

TEST_F(SiteIconTest, AnIconTakesTheLettersPlaceWhenItComes) {
    SiteIcon icon{{store, Persistence::persistent}, side};
    icon.setHost("gnu.org");
    static_cast<void>(drawn(icon));

    web.answer("https://gnu.org/apple-touch-icon.png", 404);
    store.set(plain(200), "www.gnu.org", Persistence::persistent);

    EXPECT_EQ(pixel(icon, side / 2, side / 2), (Pixel{200, 0, 0, 255}));
    EXPECT_EQ(pixel(icon, side / 2, 1), (Pixel{200, 0, 0, 255}));
    EXPECT_EQ(pixel(icon, 0, 0)[3], 0);
}

TEST_F(SiteIconTest, ACircleLeavesMoreOfTheCornerFree) {
    store.set(plain(200), "gnu.org", Persistence::persistent);
    SiteIcon square{{store, Persistence::persistent}, side};
    SiteIcon circle{{store, Persistence::persistent}, side, SiteIcon::Shape::circle};
    square.setHost("gnu.org");
    circle.setHost("gnu.org");

    EXPECT_EQ(pixel(square, 4, 4)[3], 255);
    EXPECT_EQ(pixel(circle, 4, 4)[3], 0);
}

TEST_F(SiteIconTest, AnEmptyHostAsksForNothingAndAHostOnce) {
    SiteIcon icon{{store, Persistence::persistent}, side};
    icon.setHost("");
    EXPECT_EQ(pixel(icon, side / 2, 2), opaque(SiteColor::of("")));
    EXPECT_TRUE(disk.reads.empty());

    for (int i = 0; i < 3; ++i) icon.setHost("gnu.org");
    static_cast<void>(drawn(icon));

    EXPECT_EQ(disk.reads.size(), 1U);
}

TEST_F(SiteIconTest, ABadgePrefersTheTabsOwnIconAndDoesNotAskThen) {
    BrowserSiteBadge badge{{store, Persistence::persistent}, side};
    badge.set("gnu.org", plain(90));
    EXPECT_EQ(pixel(badge, side / 2, side / 2), (Pixel{90, 0, 0, 255}));
    EXPECT_TRUE(disk.reads.empty());

    badge.set("gnu.org", nullptr);

    EXPECT_EQ(pixel(badge, side / 2, 2), opaque(SiteColor::of("gnu.org")));
    EXPECT_EQ(disk.reads.size(), 1U);
}

TEST_F(SiteIconTest, OnePictureMakesOneTextureForEachSize) {
    const auto image = plain(1);
    const auto first = iconTexture(image, 16);

    EXPECT_EQ(iconTexture(image, 16), first);
    EXPECT_NE(iconTexture(image, 32), first);
    EXPECT_NE(iconTexture(plain(1), 16), first);
}

}  // namespace
}  // namespace orvu
