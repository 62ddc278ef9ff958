#include "platform/linux/web/ReturnedKeys.h"

#include <webkit/webkit.h>

#include <algorithm>

namespace orvu {

ReturnedKeys::ReturnedKeys(Gtk::Window& window) : window_(window) {
    keys_->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
    keys_->signal_key_pressed().connect(
        sigc::track_object([this](guint, guint, Gdk::ModifierType) { return pressed(); }, *this),
        false);
    window_.add_controller(keys_);
    window_.property_focus_widget().signal_changed().connect(
        sigc::mem_fun(*this, &ReturnedKeys::focusMoved));
}

bool ReturnedKeys::pressed() {
    const auto press = keys_->get_current_event();
    // The engine gives back the very event that it was given.
    const auto found = std::ranges::find(sent_, press, &Sent::press);
    if (found != sent_.end()) {
        const Sent sent = *found;
        return cameBack(sent);
    }
    latest_ = ++pressed_;
    GtkWidget* const focus = gtk_window_get_focus(window_.gobj());
    if (!WEBKIT_IS_WEB_VIEW(focus)) return false;
    if (sent_.size() == most) sent_.pop_front();
    sent_.push_back({press, latest_, focus});
    return false;
}

bool ReturnedKeys::cameBack(const Sent& sent) {
    // A page answers in the order of the keys, so it has taken the older ones.
    std::erase_if(sent_, [&](const Sent& each) {
        return each.page == sent.page && each.number <= sent.number;
    });
    const bool isLate = gtk_window_get_focus(window_.gobj()) != sent.page && sent.number <= moved_;
    if (!isLate) latest_ = sent.number;
    return isLate;
}

void ReturnedKeys::focusMoved() { moved_ = std::max(moved_, latest_); }

}  // namespace orvu
