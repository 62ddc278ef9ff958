#include "look/view/Style.h"

#include "look/Desk.h"
#include "profiles/ProfileLook.h"

#include <gdkmm/display.h>
#include <gtkmm/cssprovider.h>
#include <gtkmm/stylecontext.h>

#include <string>
#include <string_view>

namespace orvu {
namespace {

/// Everything but the colours that stand in tables.
constexpr std::string_view sheet = R"css(
window.orvu, window.orvu * { all: unset; }
window.orvu { font-family: Inter, sans-serif; font-size: 13px; color: @ink; caret-color: @ink;
              border-radius: 12px; background: @paper; }
window.orvu.csd { box-shadow: 0 8px 28px alpha(black, .28); }
window.orvu.csd:backdrop { box-shadow: 0 8px 28px alpha(black, .18); }
window.orvu.maximized, window.orvu.fullscreen { border-radius: 0; }
window.orvu.private { color: white; caret-color: white; background: rgb(22, 20, 31); }
.orvu selection { background: alpha(@sky, .45); }
.orvu placeholder { color: @faint; }
.orvu image { -gtk-icon-size: 16px; }

.orvu .control { border-radius: 6px; }
.orvu .control-close { background: #ff5f57; }
.orvu .control-minimise { background: #febc2e; }
.orvu .control-zoom { background: #28c840; }
.orvu.private .control:backdrop, .orvu .control:backdrop { background: alpha(@faint, .5); }

.orvu .chrome-button { min-width: 32px; min-height: 32px; border-radius: 10px; }
.orvu .chrome-button:hover { background: alpha(@ink, .07); }
.orvu .chrome-button:disabled { opacity: .35; }
.orvu.private .chrome-button:hover { background: alpha(white, .09); }
.orvu .top-bar { padding-right: 14px; }
.orvu entry.address { background: white; border-radius: 12px; padding: 0 14px; min-height: 34px;
                      margin: 0 12px; }
.orvu.private entry.address { background: rgb(42, 38, 56); }
.orvu .private-mark { color: rgb(201, 191, 255); background: alpha(rgb(165, 148, 255), .18);
                      border-radius: 13px; min-height: 26px; padding: 0 10px; font-weight: 500;
                      font-size: 12px; }

.orvu .window-row { padding: 0 10px 10px 10px; border-spacing: 10px; }
.orvu .new-tab { min-height: 34px; border-radius: 12px; padding: 0 11px; font-weight: 500;
                 margin-bottom: 6px; }
.orvu .new-tab:hover { background: alpha(@ink, .04); }
.orvu .tab-row { border-radius: 12px; padding: 0 6px 0 0; min-height: 34px;
                 color: rgb(69, 71, 77); }
.orvu .tab-row:hover { background: alpha(@ink, .04); }
.orvu .tab-row.active { background: white; color: @ink;
                        box-shadow: 0 3px 8px alpha(black, .07); }
.orvu .tab-row.pinned { font-weight: 600; }
.orvu.private .tab-row, .orvu.private .new-tab { color: alpha(white, .7); }
.orvu.private .tab-row.active { background: rgb(42, 38, 56); color: white; }
.orvu .tab-title { padding: 0 0 0 11px; min-height: 34px; border-radius: 12px; }
.orvu .tab-close { min-width: 22px; min-height: 22px; border-radius: 8px; opacity: 0; }
.orvu .tab-row:hover .tab-close, .orvu .tab-row.active .tab-close,
.orvu .tab-close:focus-visible { opacity: 1; }
.orvu .tab-close:hover { background: alpha(@ink, .09); }
.orvu.private .tab-close:hover { background: alpha(white, .12); }
.orvu .tab-close image { -gtk-icon-size: 12px; }

.orvu .page-card { background: white; border-radius: 16px;
                   box-shadow: 0 6px 15px alpha(black, .07); }
.orvu.element-fullscreen .window-row { padding: 0; }
.orvu.element-fullscreen .page-card { border-radius: 0; }

.orvu button:focus-visible { outline: 2px solid @blue; outline-offset: -2px; }
.orvu entry:focus-within { outline: 2px solid alpha(@blue, .55); outline-offset: -2px; }
.orvu.private button:focus-visible, .orvu.private entry:focus-within { outline-color: @sky; }
.orvu tooltip { background: alpha(@ink, .92); color: white; border-radius: 8px;
                padding: 5px 9px; font-size: 12px; }
.orvu popover > contents { background: white; color: @ink; border-radius: 12px; padding: 6px;
                           box-shadow: 0 6px 20px alpha(black, .2); margin: 12px; }
.orvu popover modelbutton { min-height: 28px; padding: 0 10px; border-radius: 8px; }
.orvu popover modelbutton:hover { background: alpha(@ink, .07); }
.orvu popover modelbutton:disabled { color: @faint; }
.orvu popover separator { min-height: 1px; background: @line; margin: 5px 8px; }
)css";

std::string rgb(Color color) {
    return "rgb(" + std::to_string(color.red) + "," + std::to_string(color.green) + "," +
           std::to_string(color.blue) + ")";
}

std::string define(std::string_view name, Color color) {
    return "@define-color " + std::string{name} + " " + rgb(color) + ";\n";
}

/// The window's ground in each profile's colour.
std::string looks() {
    std::string rules;
    for (std::size_t i = 0; i < ProfileLook::all.size(); ++i) {
        rules += "window.orvu.look-" + std::to_string(i) +
                 " { background: " + rgb(ProfileLook::all[i].frame) + "; }\n";
    }
    return rules;
}

}  // namespace

void installStyle() {
    const std::string colors = define("paper", Desk::paper) + define("ink", Desk::ink) +
                               define("muted", Desk::muted) + define("faint", Desk::faint) +
                               define("line", Desk::line) + define("blue", Desk::blue) +
                               define("sky", Desk::sky);
    const auto provider = Gtk::CssProvider::create();
    provider->load_from_data(colors + std::string{sheet} + looks());
    Gtk::StyleContext::add_provider_for_display(Gdk::Display::get_default(), provider,
                                                GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
}

}  // namespace orvu
