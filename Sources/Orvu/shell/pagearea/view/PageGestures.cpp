#include "shell/pagearea/view/PageGestures.h"

#include "shell/menus/Commands.h"
#include "shell/pagearea/WheelZoom.h"

#include <gtkmm/eventcontrollerscroll.h>
#include <gtkmm/gestureclick.h>

#include <algorithm>

namespace orvu {
namespace {

constexpr unsigned backButton = 8;
constexpr unsigned forwardButton = 9;
/// One event may tell of many lines; nobody means to zoom that far at once.
constexpr int stepsAtOnce = 3;

using TabOfPage = std::function<std::shared_ptr<BrowserTab>()>;

void addWheel(Gtk::Widget& page, const TabOfPage& tabOf) {
    const auto wheel = Gtk::EventControllerScroll::create();
    wheel->set_flags(Gtk::EventControllerScroll::Flags::VERTICAL);
    wheel->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
    const auto zoom = std::make_shared<WheelZoom>();
    auto* const controller = wheel.get();
    wheel->signal_scroll().connect(
        [tabOf, zoom, controller](double, double turn) {
            const auto held = controller->get_current_event_state();
            if ((held & Gdk::ModifierType::CONTROL_MASK) == Gdk::ModifierType{}) {
                zoom->end();
                return false;
            }
            const auto tab = tabOf();
            if (!tab) return false;
            const int steps = std::clamp(zoom->add(turn), -stepsAtOnce, stepsAtOnce);
            WebView& view = tab->webView();
            if (steps != 0) view.setPageZoom(PageZoom::stepped(view.pageZoom(), steps));
            return true;
        },
        false);
    page.add_controller(wheel);
}

void addSideButtons(Gtk::Widget& page, const TabOfPage& tabOf) {
    const auto click = Gtk::GestureClick::create();
    click->set_button(0);  // any
    click->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
    auto* const gesture = click.get();
    click->signal_pressed().connect([tabOf, gesture](int, double, double) {
        const unsigned button = gesture->get_current_button();
        const auto tab = button == backButton || button == forwardButton ? tabOf() : nullptr;
        if (!tab) {
            gesture->set_state(Gtk::EventSequenceState::DENIED);
            return;
        }
        gesture->set_state(Gtk::EventSequenceState::CLAIMED);
        if (button == backButton) {
            tab->webView().goBack();
        } else {
            tab->webView().goForward();
        }
    });
    page.add_controller(click);
}

}  // namespace

void addPageGestures(Gtk::Widget& page, TabOfPage tab) {
    addWheel(page, tab);
    addSideButtons(page, tab);
}

}  // namespace orvu
