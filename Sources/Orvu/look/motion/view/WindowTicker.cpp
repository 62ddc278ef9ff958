#include "look/motion/view/WindowTicker.h"

#include <glibmm/main.h>
#include <gtkmm/settings.h>

#include <map>

namespace orvu {
namespace {

constexpr unsigned interval = 33;  // milliseconds

std::map<GtkRoot*, std::weak_ptr<WindowTicker>>& tickers() {
    static std::map<GtkRoot*, std::weak_ptr<WindowTicker>> all;
    return all;
}

}  // namespace

bool animationsEnabled() { return Gtk::Settings::get_default()->property_gtk_enable_animations(); }

std::shared_ptr<WindowTicker> WindowTicker::of(GtkRoot* window) {
    std::weak_ptr<WindowTicker>& known = tickers()[window];
    std::shared_ptr<WindowTicker> ticker = known.lock();
    if (!ticker) {
        ticker = std::make_shared<WindowTicker>(window);
        known = ticker;
    }
    return ticker;
}

WindowTicker::WindowTicker(GtkRoot* window)
    : window_(window), surface_(gtk_native_get_surface(GTK_NATIVE(window))) {
    if (GDK_IS_TOPLEVEL(surface_)) {
        g_object_ref(surface_);  // the window may let go of it first
        stateChanged_ = g_signal_connect_swapped(
            surface_, "notify::state", G_CALLBACK(+[](WindowTicker* ticker) { ticker->update(); }),
            this);
    }
    Gtk::Settings::get_default()->property_gtk_enable_animations().signal_changed().connect(
        sigc::mem_fun(*this, &WindowTicker::update));
}

WindowTicker::~WindowTicker() {
    timer_.disconnect();
    if (stateChanged_ != 0) {
        g_signal_handler_disconnect(surface_, stateChanged_);
        g_object_unref(surface_);
    }
    tickers().erase(window_);
}

void WindowTicker::add(Gtk::Widget& widget) {
    widgets_.push_back(&widget);
    update();
}

void WindowTicker::remove(Gtk::Widget& widget) {
    std::erase(widgets_, &widget);
    update();
}

void WindowTicker::update() {
    const bool shouldTick = !widgets_.empty() && canBeSeen() && animationsEnabled();
    if (shouldTick == isTicking()) return;
    if (shouldTick) {
        timer_ = Glib::signal_timeout().connect(sigc::mem_fun(*this, &WindowTicker::tick), interval,
                                                Glib::PRIORITY_DEFAULT_IDLE);
    } else {
        timer_.disconnect();
        for (Gtk::Widget* const widget : widgets_) widget->queue_draw();
    }
}

bool WindowTicker::canBeSeen() const {
    if (stateChanged_ == 0) return true;
    return (gdk_toplevel_get_state(GDK_TOPLEVEL(surface_)) & GDK_TOPLEVEL_STATE_MINIMIZED) == 0;
}

bool WindowTicker::tick() {
    for (Gtk::Widget* const widget : widgets_) widget->queue_draw();
    return true;
}

}  // namespace orvu
