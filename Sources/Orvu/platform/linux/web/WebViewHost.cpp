#include "platform/linux/web/WebViewHost.h"

#include "platform/linux/web/OrvuWebView.h"

#include <gtkmm/window.h>

namespace orvu {
namespace {

/// The engine's view behind the seam: views stand on the same floor as it.
OrvuWebView& engineView(BrowserTab& tab) { return static_cast<OrvuWebView&>(tab.webView()); }

}  // namespace

WebViewHost::WebViewHost() {
    add_css_class("web-view-host");
    set_expand(true);
}

WebViewHost::~WebViewHost() {
    onFullscreen = nullptr;  // whoever wanted to know is on its way out as well
    detach();
}

bool WebViewHost::show(const std::shared_ptr<BrowserTab>& tab) {
    const auto page = tab && !tab->isNewTab() ? tab : nullptr;
    const auto current = shown_.lock();
    const bool attached = get_first_child() != nullptr;
    if (current == page && attached == (page != nullptr)) return false;
    detach();
    if (page) attach(*page);
    shown_ = page;
    return true;
}

void WebViewHost::focusPage() {
    if (get_first_child()) get_first_child()->grab_focus();
}

void WebViewHost::attach(BrowserTab& tab) {
    OrvuWebView& view = engineView(tab);
    GtkWidget* const widget = view.widget();
    view.setReportsFocus(false);
    if (GtkWidget* const parent = gtk_widget_get_parent(widget)) {
        gtk_box_remove(GTK_BOX(parent), widget);
    }
    gtk_widget_set_hexpand(widget, TRUE);
    gtk_widget_set_vexpand(widget, TRUE);
    gtk_box_append(Gtk::Box::gobj(), widget);
    view.setReportsFocus(true);
    view.onFullscreen = [this](bool on) { setFullscreen(on); };
}

void WebViewHost::detach() {
    const auto previous = shown_.lock();
    if (previous) engineView(*previous).setReportsFocus(false);
    while (Gtk::Widget* const child = get_first_child()) remove(*child);
    if (previous) {
        engineView(*previous).setReportsFocus(true);
        engineView(*previous).onFullscreen = nullptr;
    }
    if (inFullscreen_) giveScreenBack(previous.get());
}

void WebViewHost::setFullscreen(bool on) {
    inFullscreen_ = on;
    if (onFullscreen) onFullscreen(on);
}

void WebViewHost::giveScreenBack(BrowserTab* previous) {
    if (previous) {
        static_cast<void>(previous->webView().evaluateJavaScript("document.exitFullscreen(); 0"));
    }
    if (auto* const window = dynamic_cast<Gtk::Window*>(get_root())) window->unfullscreen();
    setFullscreen(false);
}

}  // namespace orvu
