#include "shell/rewind/view/RewindPopover.h"

#include "foundation/text/Translation.h"
#include "look/view/Accessible.h"
#include "look/view/Controllers.h"
#include "look/view/Keyboard.h"

#include <gdk/gdkkeysyms.h>

#include <utility>

namespace orvu {

RewindPopover::RewindPopover(std::shared_ptr<BrowserStore> store) : store_(std::move(store)) {
    add_css_class("rewind-popover");
    setAccessibleLabel(*this, phrase("Rewind today"));
    set_autohide(false);  // it would take the pointer
    set_has_arrow(false);
    set_halign(Gtk::Align::START);
    set_position(Gtk::PositionType::BOTTOM);
    signal_closed().connect(sigc::mem_fun(*this, &RewindPopover::ended));
}

RewindPopover::~RewindPopover() {
    notify_callbacks();
    unwatch();
    unset_child();
}

void RewindPopover::open(Keyboard keyboard) {
    auto* const window = dynamic_cast<Gtk::Window*>(get_root());
    if (!window || store_->todayVisits().empty()) return;
    if (!isOpen()) {
        unset_child();
        content_ = std::make_unique<BrowserRewindView>(store_, [this] { popdown(); });
        set_child(*content_);
        watch(*window);
        popup();
        changed_.emit();
    }
    if (keyboard == Keyboard::comes) content_->focusNewest();
}

void RewindPopover::watch(Gtk::Window& window) {
    window_ = &window;
    keys_ = Gtk::EventControllerKey::create();
    keys_->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
    keyPressed_ = keys_->signal_key_pressed().connect(
        [this](guint key, guint, Gdk::ModifierType) { return keyPressed(key); }, false);
    window_->add_controller(keys_);
    press_ = Gtk::GestureClick::create();
    press_->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
    press_->set_button(0);
    pressed_ = press_->signal_pressed().connect([this](int, double, double) { pressed(); });
    window_->add_controller(press_);
    activity_ = window_->property_is_active().signal_changed().connect([this] {
        if (window_ && !window_->is_active()) popdown();
    });
}

void RewindPopover::unwatch() {
    if (!window_) return;
    activity_ = {};
    keyPressed_ = {};
    pressed_ = {};
    removeAfterEvent(keys_);  // one of them brought us here
    removeAfterEvent(press_);
    keys_.reset();
    press_.reset();
    window_ = nullptr;
}

bool RewindPopover::keyPressed(guint key) {
    if (key != GDK_KEY_Escape) return false;
    popdown();
    return true;
}

void RewindPopover::pressed() {
    // The window hears of presses within the popover as well.
    const auto event = press_->get_current_event();
    if (event && event->get_surface() == get_surface()) return;
    popdown();
}

void RewindPopover::ended() {
    if (!isOpen()) return;
    const bool hadKeyboard = holdsKeyboard(*this);
    unwatch();
    changed_.emit();
    if (hadKeyboard) keyboardLeft_.emit();
}

}  // namespace orvu
