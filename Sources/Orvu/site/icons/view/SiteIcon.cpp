#include "site/icons/view/SiteIcon.h"

#include "site/icons/SiteColor.h"
#include "look/Desk.h"
#include "look/view/Accessible.h"
#include "site/icons/SiteLetter.h"

#include <gtkmm/snapshot.h>

#include <utility>

namespace orvu {
namespace {

constexpr float imageCorner = 0.22F;  // of the size, as the next ones
constexpr float letterCorner = 0.3F;
constexpr float circleCorner = 0.5F;
constexpr double letterSize = 0.56;

GdkRGBA rgba(const Color& color) {
    return {static_cast<float>(color.red) / 255.0F, static_cast<float>(color.green) / 255.0F,
            static_cast<float>(color.blue) / 255.0F, 1.0F};
}

/// Limits what is drawn next to a square with round corners.
void pushRounded(GtkSnapshot* snapshot, float size, float corner) {
    const graphene_rect_t bounds{{0, 0}, {size, size}};
    GskRoundedRect outline;
    gsk_rounded_rect_init_from_rect(&outline, &bounds, corner * size);
    gtk_snapshot_push_rounded_clip(snapshot, &outline);
}

}  // namespace

SiteIcon::SiteIcon(SiteIcons icons, int size, Shape shape)
    : icons_(icons), size_(size), shape_(shape) {
    set_halign(Gtk::Align::CENTER);
    set_valign(Gtk::Align::CENTER);
    hideFromAccessibility(*this);
}

void SiteIcon::setHost(const std::string& host) { show(host, nullptr); }

void SiteIcon::show(const std::string& host, const ImagePointer& image) {
    const bool sameHost = host == host_;
    if (!sameHost) letter_.reset();
    host_ = host;
    if (image) {
        isAsked_ = false;
        arrival_ = {};
        return use(image);
    }
    if (sameHost && isAsked_) return;
    isAsked_ = true;
    arrival_ = icons_.connectIcon(host_, sigc::mem_fun(*this, &SiteIcon::ask));
    queue_draw();
    ask();
}

void SiteIcon::ask() { use(icons_.icon(host_)); }

void SiteIcon::use(ImagePointer image) {
    if (image == image_) return;
    image_ = std::move(image);
    texture_.reset();
    queue_draw();
}

Gtk::SizeRequestMode SiteIcon::get_request_mode_vfunc() const {
    return Gtk::SizeRequestMode::CONSTANT_SIZE;
}

void SiteIcon::measure_vfunc(Gtk::Orientation, int, int& minimum, int& natural,
                             int& minimumBaseline, int& naturalBaseline) const {
    minimum = natural = size_;
    minimumBaseline = naturalBaseline = -1;
}

void SiteIcon::snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) {
    if (image_) {
        drawImage(snapshot->gobj());
    } else {
        drawLetter(snapshot->gobj());
    }
}

void SiteIcon::drawImage(GtkSnapshot* snapshot) {
    const int scale = get_scale_factor();
    if (!texture_ || textureScale_ != scale) {
        textureScale_ = scale;
        texture_ = iconTexture(image_, size_ * scale);
    }
    const auto side = static_cast<float>(size_);
    const graphene_rect_t bounds{{0, 0}, {side, side}};
    pushRounded(snapshot, side, shape_ == Shape::circle ? circleCorner : imageCorner);
    gtk_snapshot_append_texture(snapshot, texture_->get(), &bounds);
    gtk_snapshot_pop(snapshot);
}

void SiteIcon::drawLetter(GtkSnapshot* snapshot) {
    if (!letter_) {
        letter_ = create_pango_layout(siteLetter(host_));
        auto font = letter_->get_context()->get_font_description();
        font.set_weight(Pango::Weight::SEMIBOLD);
        font.set_absolute_size(letterSize * size_ * PANGO_SCALE);
        letter_->set_font_description(font);
    }
    const auto side = static_cast<float>(size_);
    const graphene_rect_t bounds{{0, 0}, {side, side}};
    const GdkRGBA ground = rgba(SiteColor::of(host_));
    pushRounded(snapshot, side, shape_ == Shape::circle ? circleCorner : letterCorner);
    gtk_snapshot_append_color(snapshot, &ground, &bounds);
    int width = 0;
    int height = 0;
    letter_->get_size(width, height);
    const auto middle = [side](int length) {
        return (side - static_cast<float>(length) / PANGO_SCALE) / 2;
    };
    const graphene_point_t corner{middle(width), middle(height)};
    gtk_snapshot_translate(snapshot, &corner);
    const GdkRGBA ink = rgba(Desk::ink);
    gtk_snapshot_append_layout(snapshot, letter_->gobj(), &ink);
    gtk_snapshot_pop(snapshot);
}

}  // namespace orvu
