#include "notch/view/NotchCorrection.h"

#include "foundation/text/Translation.h"
#include "look/text/OneLine.h"
#include "look/view/Accessible.h"
#include "notch/view/Entrance.h"

#include <glibmm/markup.h>

namespace orvu {
namespace {

constexpr std::size_t textLimit = 120;
constexpr Phrase offer = phrase("Did you mean {1} — press to use it");

/// The offer with the text marked in it, and what comes behind paler.
std::string markedOffer(const std::string& text) {
    const std::string marked = "</span><span weight='semibold' underline='single'>" +
                               Glib::Markup::escape_text(text).raw() + "</span><span alpha='60%'>";
    return "<span>" + filled(Glib::Markup::escape_text(offer.c_str()).raw(), {marked}) + "</span>";
}

}  // namespace

NotchCorrection::NotchCorrection(const std::function<void()>& use)
    : entrance_(*this, Motion::snappy, 0, [this](double progress) { step(progress); }) {
    add_css_class("notch-correction-place");
    button_.add_css_class("notch-correction");
    button_.set_focus_on_click(false);
    button_.signal_clicked().connect(use);
    text_.set_xalign(0);
    text_.set_ellipsize(Pango::EllipsizeMode::END);
    button_.set_child(text_);
    button_.set_parent(*this);
    set_visible(false);
}

NotchCorrection::~NotchCorrection() { button_.unparent(); }

void NotchCorrection::show(const std::optional<std::string>& correction) {
    button_.set_sensitive(correction.has_value());
    if (!correction) {
        entrance_.animateTo(0);
        return;
    }
    if (*correction != shown_ || text_.get_text().empty()) {
        shown_ = *correction;
        const std::string text = oneLine(shown_, textLimit);
        text_.set_markup(markedOffer(text));
        setAccessibleLabel(button_, filled(offer, {text}));
    }
    set_visible(true);
    entrance_.animateTo(1);
}

void NotchCorrection::step(double progress) {
    if (progress <= 0 && !button_.get_sensitive()) set_visible(false);
    queue_draw();
}

Gtk::SizeRequestMode NotchCorrection::get_request_mode_vfunc() const {
    return Gtk::SizeRequestMode::CONSTANT_SIZE;
}

void NotchCorrection::measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum,
                                    int& natural, int& minimumBaseline,
                                    int& naturalBaseline) const {
    button_.measure(orientation, forSize, minimum, natural, minimumBaseline, naturalBaseline);
    minimumBaseline = naturalBaseline = -1;
}

void NotchCorrection::size_allocate_vfunc(int width, int height, int baseline) {
    button_.size_allocate({0, 0, width, height}, baseline);
}

void NotchCorrection::snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) {
    drawEntrance(snapshot, entrance_.value(), get_width(),
                 [&] { snapshot_child(button_, snapshot); });
}

}  // namespace orvu
