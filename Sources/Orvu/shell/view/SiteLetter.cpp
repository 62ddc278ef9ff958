#include "shell/view/SiteLetter.h"

#include "core/SiteColor.h"
#include "foundation/Text.h"
#include "look/Desk.h"
#include "look/view/Accessible.h"

#include <gtkmm/snapshot.h>
#include <pangomm/layout.h>

namespace orvu {
namespace {

GdkRGBA rgba(Color color) {
    constexpr float full = 255;
    return {static_cast<float>(color.red) / full, static_cast<float>(color.green) / full,
            static_cast<float>(color.blue) / full, 1};
}

}  // namespace

SiteLetter::SiteLetter(int size) : size_(size) {
    hideFromAccessibility(*this);
    set_halign(Gtk::Align::CENTER);
    set_valign(Gtk::Align::CENTER);
}

void SiteLetter::setHost(const std::string& host) {
    if (host == host_) return;
    host_ = host;
    queue_draw();
}

void SiteLetter::measure_vfunc(Gtk::Orientation, int, int& minimum, int& natural,
                               int& minimumBaseline, int& naturalBaseline) const {
    minimum = natural = size_;
    minimumBaseline = naturalBaseline = -1;
}

void SiteLetter::snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) {
    GtkSnapshot* const target = snapshot->gobj();
    const auto side = static_cast<float>(size_);
    const graphene_rect_t bounds = GRAPHENE_RECT_INIT(0, 0, side, side);
    GskRoundedRect shape;
    gsk_rounded_rect_init_from_rect(&shape, &bounds, side * 0.3F);
    const GdkRGBA ground = rgba(SiteColor::of(host_));
    gtk_snapshot_push_rounded_clip(target, &shape);
    gtk_snapshot_append_color(target, &ground, &bounds);
    gtk_snapshot_pop(target);

    const Glib::ustring letter{std::string{firstCharacters(host_, 1)}};
    auto layout = create_pango_layout(host_.empty() ? "+" : letter.uppercase());
    Pango::FontDescription font{"Inter, sans-serif"};
    font.set_weight(Pango::Weight::SEMIBOLD);
    font.set_absolute_size(0.56 * size_ * Pango::SCALE);
    layout->set_font_description(font);
    const auto extents = layout->get_pixel_logical_extents();
    const graphene_point_t corner = {(side - static_cast<float>(extents.get_width())) / 2,
                                     (side - static_cast<float>(extents.get_height())) / 2};
    const GdkRGBA ink = rgba(Desk::ink);
    gtk_snapshot_translate(target, &corner);
    gtk_snapshot_append_layout(target, layout->gobj(), &ink);
}

}  // namespace orvu
