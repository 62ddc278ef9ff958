#include "pagetools/view/ReaderView.h"

#include "look/view/Accessible.h"
#include "look/view/CssClass.h"

#include <gtkmm/eventcontrollerfocus.h>
#include <gtkmm/eventcontrollerkey.h>

#include <algorithm>
#include <utility>

namespace orvu {
namespace {

/// What of a page stays in sight when the text moves on by a page.
constexpr double kept = 0.1;

}  // namespace

ReaderView::ReaderView(std::shared_ptr<const ReaderArticle> article, ReaderLook& look,
                       std::function<void()> close)
    : article_(std::move(article)),
      look_(look),
      text_(readerPieces(*article_)),
      controls_(look, std::move(close)),
      fade_(*this, Motion::snappy, 0, [this](double shown) { fade(shown); }) {
    add_css_class("reader");
    property_accessible_role() = Gtk::Accessible::Role::DOCUMENT;
    setAccessibleLabel(*this, article_->title);
    setAccessibleLabel(text_, article_->title);
    scroll_.set_policy(Gtk::PolicyType::NEVER, Gtk::PolicyType::AUTOMATIC);
    scroll_.set_child(text_);
    nameScrollBars(scroll_);
    set_child(scroll_);
    add_overlay(controls_);
    addKeys();
    const auto focus = Gtk::EventControllerFocus::create();
    focus->signal_enter().connect(focused_.make_slot());
    add_controller(focus);
    look_.connectChanged(sigc::mem_fun(*this, &ReaderView::refresh));
    refresh();
    set_opacity(0);
    signal_map().connect([this] { fade_.animateTo(1); });
}

void ReaderView::addKeys() {
    // Before the text, which has no use for these keys without a caret.
    const auto keys = Gtk::EventControllerKey::create();
    keys->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
    keys->signal_key_pressed().connect(sigc::mem_fun(*this, &ReaderView::keyPressed), false);
    text_.add_controller(keys);
}

bool ReaderView::keyPressed(guint key, guint, Gdk::ModifierType state) {
    const auto held = state & (Gdk::ModifierType::CONTROL_MASK | Gdk::ModifierType::ALT_MASK);
    if (held != Gdk::ModifierType{}) return false;
    const bool shift = (state & Gdk::ModifierType::SHIFT_MASK) != Gdk::ModifierType{};
    const auto place = scroll_.get_vadjustment();
    const double page = place->get_page_size() * (1 - kept);
    switch (key) {
        case GDK_KEY_space:
            place->set_value(place->get_value() + (shift ? -page : page));
            return true;
        case GDK_KEY_Home:
            place->set_value(place->get_lower());
            return !shift;
        case GDK_KEY_End:
            place->set_value(place->get_upper() - place->get_page_size());
            return !shift;
        default:
            return false;
    }
}

void ReaderView::refresh() {
    for (const ReaderThemeFacts& facts : readerThemes) {
        setCssClass(*this, "reader-" + std::string{facts.rawValue}, facts.theme == look_.theme());
    }
    text_.setLook(look_.size(), look_.theme());
    controls_.refresh();
}

void ReaderView::leave(std::function<void()> gone) {
    set_can_target(false);
    set_can_focus(false);
    gone_ = std::move(gone);
    fade_.animateTo(0);
}

void ReaderView::fade(double shown) {
    set_opacity(std::clamp(shown, 0.0, 1.0));
    if (gone_ && shown == 0) gone_();
}

}  // namespace orvu
