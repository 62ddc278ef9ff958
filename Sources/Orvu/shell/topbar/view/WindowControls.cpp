#include "shell/topbar/view/WindowControls.h"

#include "foundation/text/Translation.h"
#include "shell/WindowPlacement.h"
#include "look/view/Accessible.h"

namespace orvu {
namespace {

constexpr int diameter = 12;

}  // namespace

WindowControls::WindowControls() {
    const auto origins = WindowPlacement::windowButtonOrigins(diameter);
    set_spacing(origins[1].x - origins[0].x - diameter);
    set_margin_start(origins[0].x);
    set_margin_top(origins[0].y);
    set_valign(Gtk::Align::START);
    addButton(close_, phrase("Close"), "control-close", "win.performClose");
    addButton(minimise_, phrase("Minimise"), "control-minimise", "win.performMiniaturize");
    addButton(zoom_, phrase("Zoom"), "control-zoom", "win.performZoom");
}

void WindowControls::addButton(Gtk::Button& button, const std::string& label, const char* style,
                               const char* action) {
    button.set_size_request(diameter, diameter);
    button.set_focusable(false);
    button.add_css_class("control");
    button.add_css_class(style);
    gtk_actionable_set_action_name(GTK_ACTIONABLE(button.gobj()), action);
    setAccessibleLabel(button, label);
    append(button);
}

}  // namespace orvu
