#include "platform/linux/web/SwipeGestures.h"

namespace orvu {
namespace {

gboolean eventHeard(GtkEventControllerLegacy*, GdkEvent* event, gpointer data) {
    GdkDevice* const device = gdk_event_get_device(event);
    const auto source = device ? gdk_device_get_source(device) : GDK_SOURCE_MOUSE;
    static_cast<SwipeGestures*>(data)->heard(gdk_event_get_event_type(event), source);
    return GDK_EVENT_PROPAGATE;
}

void unmapped(WebKitWebView*, gpointer data) { static_cast<SwipeGestures*>(data)->end(); }

}  // namespace

SwipeGestures::SwipeGestures(WebKitWebView* view, MainLoop& loop)
    : view_(view), loop_(loop), events_(gtk_event_controller_legacy_new()) {
    set(false);
    gtk_event_controller_set_propagation_phase(events_, GTK_PHASE_CAPTURE);
    g_signal_connect(events_, "event", G_CALLBACK(eventHeard), this);
    gtk_widget_add_controller(GTK_WIDGET(view_), events_);
    g_signal_connect(view_, "unmap", G_CALLBACK(unmapped), this);
}

SwipeGestures::~SwipeGestures() {
    g_signal_handlers_disconnect_by_data(view_, this);
    gtk_widget_remove_controller(GTK_WIDGET(view_), events_);
}

bool SwipeGestures::areOn() const {
    return webkit_settings_get_enable_back_forward_navigation_gestures(
               webkit_web_view_get_settings(view_)) != FALSE;
}

void SwipeGestures::heard(GdkEventType type, GdkInputSource source) {
    const bool isTouch = type == GDK_TOUCH_BEGIN || type == GDK_TOUCH_UPDATE;
    const bool isTouchpad = type == GDK_SCROLL && source == GDK_SOURCE_TOUCHPAD;
    if (!isTouch && !isTouchpad) return;
    set(true);
    end_ = loop_.after(lingering, [this] { end(); });
}

void SwipeGestures::end() {
    end_.cancel();
    set(false);
}

void SwipeGestures::set(bool on) {
    if (on == areOn()) return;
    webkit_settings_set_enable_back_forward_navigation_gestures(webkit_web_view_get_settings(view_),
                                                                static_cast<gboolean>(on));
}

}  // namespace orvu
