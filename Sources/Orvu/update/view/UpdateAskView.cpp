#include "update/view/UpdateAskView.h"

#include "look/view/Accessible.h"
#include "look/view/SymbolImage.h"

#include <gtkmm/snapshot.h>

#include <algorithm>
#include <string>
#include <utility>

namespace orvu {
namespace {

constexpr int symbolSize = 15;
/// Of the text, in characters: fewer than the card takes, so that the card says how wide it is.
constexpr int leastWidth = 24;

}  // namespace

UpdateAskView::UpdateAskView(UpdateAsk& ask, std::function<void()> gone)
    : Gtk::Box(Gtk::Orientation::VERTICAL),
      ask_(ask),
      gone_(std::move(gone)),
      shown_(*this, Motion::open, 0, [this](double value) { step(value); }) {
    add_css_class("update-ask");
    set_halign(Gtk::Align::START);
    set_valign(Gtk::Align::END);
    property_accessible_role() = Gtk::Accessible::Role::ALERT;
    setAccessibleLabel(*this, std::string{UpdateAsk::title});
    addHead();
    addText();
    addButtons();
}

UpdateAskView::~UpdateAskView() { notify_callbacks(); }

void UpdateAskView::addHead() {
    auto& tile = *Gtk::make_managed<Gtk::Box>();
    tile.add_css_class("update-ask-tile");
    tile.set_valign(Gtk::Align::CENTER);
    symbol_.set_hexpand(true);
    setSymbol(symbol_, std::string{UpdateAsk::symbol}, symbolSize);
    tile.append(symbol_);
    tile.set_hexpand(false);
    hideFromAccessibility(tile);
    head_.add_css_class("update-ask-head");
    head_.append(tile);
    title_.set_text(std::string{UpdateAsk::title});
    title_.add_css_class("update-ask-title");
    title_.set_xalign(0);
    head_.append(title_);
    append(head_);
}

void UpdateAskView::addText() {
    text_.set_text(UpdateAsk::text.c_str());
    text_.add_css_class("update-ask-text");
    text_.set_xalign(0);
    text_.set_wrap(true);
    text_.set_max_width_chars(leastWidth);
    append(text_);
}

void UpdateAskView::addButtons() {
    buttons_.add_css_class("update-ask-buttons");
    addButton(UpdateAsk::automaticallyTitle, "primary", UpdateAsk::Answer::automatically);
    addButton(UpdateAsk::askTitle, "plain", UpdateAsk::Answer::ask);
    append(buttons_);
}

void UpdateAskView::addButton(std::string_view title, const char* cssClass,
                              UpdateAsk::Answer answer) {
    auto& button = *Gtk::make_managed<Gtk::Button>(std::string{title});
    button.add_css_class("update-ask-button");
    button.add_css_class(cssClass);
    button.set_hexpand(answer == UpdateAsk::Answer::automatically);
    button.signal_clicked().connect([this, answer] { ask_.answer(answer); });
    buttons_.append(button);
}

void UpdateAskView::enter() {
    isLeaving_ = false;
    set_can_target(true);
    set_can_focus(true);
    shown_.animateTo(1);
}

void UpdateAskView::leave() {
    isLeaving_ = true;
    set_can_target(false);
    set_can_focus(false);
    shown_.animateTo(0);
}

void UpdateAskView::step(double value) {
    queue_draw();
    // The spring goes on a little beyond, and comes back.
    if (value == 0 && std::exchange(isLeaving_, false)) gone_();
}

void UpdateAskView::snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) {
    GtkSnapshot* const target = snapshot->gobj();
    const graphene_point_t below{0, static_cast<float>((1 - shown_.value()) * get_height())};
    gtk_snapshot_save(target);
    gtk_snapshot_translate(target, &below);
    gtk_snapshot_push_opacity(target, std::clamp(shown_.value(), 0.0, 1.0));
    Gtk::Box::snapshot_vfunc(snapshot);
    gtk_snapshot_pop(target);
    gtk_snapshot_restore(target);
}

}  // namespace orvu
