#include "platform/linux/web/WebViewHost.h"

#include <gtkmm/eventcontrollerkey.h>
#include <gtkmm/window.h>

namespace orvu {

WebViewHost::WebViewHost() {
    add_css_class("web-view-host");
    set_expand(true);
    const auto keys = Gtk::EventControllerKey::create();
    keys->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
    keys->signal_key_pressed().connect(
        [this](guint key, guint, Gdk::ModifierType) {
            if (inFullscreen_ && key == GDK_KEY_Escape) takeScreenBack();
            return false;  // the engine tells the page
        },
        false);
    add_controller(keys);
}

WebViewHost::~WebViewHost() {
    detach();
    while (Gtk::Widget* const child = get_first_child()) remove(*child);
}

bool WebViewHost::show(WebView* page) {
    auto* const target = static_cast<OrvuWebView*>(page);
    const bool attached = holdsShown();
    if (inFullscreen_ && !attached) detach();  // the page that filled the screen has ended
    if (shown() == target && attached == (target != nullptr)) return false;
    detach();
    if (target) attach(*target);
    return true;
}

void WebViewHost::focusPage() {
    if (holdsShown()) gtk_widget_grab_focus(shown()->widget());
}

OrvuWebView* WebViewHost::shown() const {
    const auto live = shown_.lock();
    return live ? *live : nullptr;
}

bool WebViewHost::holdsShown() const {
    OrvuWebView* const page = shown();
    return page && page->isMade() &&
           gtk_widget_get_parent(page->widget()) == GTK_WIDGET(Gtk::Box::gobj());
}

void WebViewHost::attach(OrvuWebView& page) {
    GtkWidget* const widget = page.widget();
    GtkWidget* const parent = gtk_widget_get_parent(widget);
    page.setReportsFocus(false);
    gtk_widget_set_hexpand(widget, TRUE);
    gtk_widget_set_vexpand(widget, TRUE);
    gtk_widget_set_visible(widget, TRUE);
    if (parent != GTK_WIDGET(Gtk::Box::gobj())) {
        if (parent) gtk_box_remove(GTK_BOX(parent), widget);
        gtk_box_append(Gtk::Box::gobj(), widget);
    }
    page.cameIntoWindow();
    page.setReportsFocus(true);
    pageFullscreen_ = page.connectFullscreen(sigc::mem_fun(*this, &WebViewHost::setFullscreen));
    shown_ = page.handle();
}

void WebViewHost::detach() {
    OrvuWebView* const previous = shown();
    if (holdsShown()) {
        previous->setReportsFocus(false);
        gtk_widget_set_visible(previous->widget(), FALSE);
        previous->setReportsFocus(true);
    }
    pageFullscreen_ = {};
    shown_.reset();
    if (inFullscreen_) giveScreenBack(previous);
}

void WebViewHost::setFullscreen(bool on) {
    if (on && !inFullscreen_) watchWindow();
    if (!on) windowFullscreen_ = {};
    inFullscreen_ = on;
    fullscreen_.emit(on);
}

void WebViewHost::watchWindow() {
    auto* const window = dynamic_cast<Gtk::Window*>(get_root());
    if (!window) return;
    windowWasFull_ = window->is_fullscreen();
    windowFullscreen_ = window->property_fullscreened().signal_changed().connect([this, window] {
        if (!window->is_fullscreen()) setFullscreen(false);
    });
}

void WebViewHost::takeScreenBack() {
    auto* const window = dynamic_cast<Gtk::Window*>(get_root());
    if (window && !windowWasFull_) window->unfullscreen();
    setFullscreen(false);
}

void WebViewHost::giveScreenBack(OrvuWebView* page) {
    if (page) static_cast<void>(page->evaluateJavaScript("document.exitFullscreen(); 0"));
    if (auto* const window = dynamic_cast<Gtk::Window*>(get_root())) window->unfullscreen();
    setFullscreen(false);
}

}  // namespace orvu
