#include "shell/profiles/view/ProfilePreview.h"

#include "look/view/Accessible.h"
#include "look/view/SymbolImage.h"
#include "shell/profiles/view/ProfileColorRules.h"

namespace orvu {
namespace {

constexpr int width = 260;
constexpr int height = 360;
constexpr int tileSize = 50;
constexpr int symbolSize = 24;
constexpr Paint dots{Desk::ink, 0.09};

}  // namespace

ProfilePreview::ProfilePreview(ProfileEditor& editor)
    : editor_(editor),
      desk_(dots),
      window_(Gtk::Orientation::VERTICAL),
      page_(Gtk::Orientation::VERTICAL) {
    add_css_class("profile-preview");
    set_overflow(Gtk::Overflow::HIDDEN);
    set_size_request(width, height);
    hideFromAccessibility(*this);  // it says nothing that the fields don't
    set_child(desk_);
    addControls();
    addPage();
    add_overlay(window_);
    refresh();
}

void ProfilePreview::addControls() {
    auto& controls = *Gtk::make_managed<Gtk::Box>();
    controls.add_css_class("preview-controls");
    for (const char* const style : {"control-close", "control-minimise", "control-zoom"}) {
        auto& dot = *Gtk::make_managed<Gtk::Box>();
        dot.add_css_class("preview-control");
        dot.add_css_class(style);
        controls.append(dot);
    }
    window_.append(controls);
}

void ProfilePreview::addPage() {
    page_.add_css_class("preview-page");
    page_.set_expand(true);
    tile_.add_css_class("profile-ground");
    tile_.add_css_class("preview-tile");
    tile_.set_size_request(tileSize, tileSize);
    tile_.set_halign(Gtk::Align::CENTER);
    symbol_.set_expand(true);
    tile_.append(symbol_);
    name_.add_css_class("preview-name");
    name_.set_ellipsize(Pango::EllipsizeMode::END);
    auto& middle = *Gtk::make_managed<Gtk::Box>(Gtk::Orientation::VERTICAL);
    middle.add_css_class("preview-middle");
    middle.set_expand(true);
    middle.set_valign(Gtk::Align::CENTER);
    middle.append(tile_);
    middle.append(name_);
    page_.append(middle);
    window_.append(page_);
}

void ProfilePreview::refresh() {
    desk_.setGround(editor_.look().frame);
    for (const ProfileLook& look : ProfileLook::all) {
        tile_.remove_css_class(profileColorClass(look.color));
    }
    tile_.add_css_class(profileColorClass(editor_.look().color));
    setSymbol(symbol_, editor_.icon.get(), symbolSize);
    name_.set_text(editor_.previewName());
}

}  // namespace orvu
