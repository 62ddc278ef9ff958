#include "update/view/UpdatePillView.h"

#include "look/view/Accessible.h"
#include "look/view/Children.h"
#include "look/view/CssClass.h"
#include "look/view/SymbolImage.h"

namespace orvu {
namespace {

using Kind = UpdatePill::Look::Kind;

constexpr int symbolSize = 14;

}  // namespace

UpdatePillView::UpdatePillView(Updater& updater, Settings& settings)
    : updater_(updater), pill_(updater) {
    add_css_class("update-pill");
    set_valign(Gtk::Align::CENTER);
    set_visible(false);
    capsule_.add_css_class("update-capsule");
    capsule_.set_focus_on_click(false);
    line_.append(symbol_);
    line_.append(label_);
    hideFromAccessibility(line_);  // the button is one element
    capsule_.set_child(line_);
    capsule_.signal_clicked().connect(sigc::mem_fun(*this, &UpdatePillView::press));
    wheel_.add_css_class("update-wheel");
    wheel_.set_valign(Gtk::Align::CENTER);
    wheel_.property_accessible_role() = Gtk::Accessible::Role::PROGRESS_BAR;
    const auto changed = sigc::mem_fun(*this, &UpdatePillView::refresh);
    updater_.state.connectChanged(changed);
    settings.autoUpdate.connectChanged(changed);
    refresh();
}

UpdatePillView::~UpdatePillView() { notify_callbacks(); }

void UpdatePillView::refresh() {
    const auto look = pill_.look();
    if (look == shown_) return;
    shown_ = look;
    set_visible(look.kind != Kind::nothing);
    switch (look.kind) {
        case Kind::nothing:
            setChildren(*this, {});
            break;
        case Kind::wheel:
            wheel_.set_tooltip_text(look.help);
            setAccessibleLabel(wheel_, look.help);
            setChildren(*this, {&wheel_});
            break;
        case Kind::capsule:
            showCapsule(look);
            break;
    }
}

void UpdatePillView::showCapsule(const UpdatePill::Look& look) {
    setSymbol(symbol_, std::string{look.symbol}, symbolSize);
    label_.set_text(std::string{look.label});
    capsule_.set_tooltip_text(look.help);
    setAccessibleLabel(capsule_, std::string{look.label});
    setAccessibleDescription(capsule_, look.help);
    setCssClass(capsule_, "pulsing", look.pulses);
    setChildren(*this, {&capsule_});
}

void UpdatePillView::press() {
    switch (pill_.action()) {
        case UpdatePill::Action::none:
            return;
        case UpdatePill::Action::download:
            return updater_.download();
        case UpdatePill::Action::restart:
            activate_action(restartAction);
    }
}

}  // namespace orvu
