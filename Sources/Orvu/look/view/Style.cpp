#include "look/view/Style.h"

#include "look/Desk.h"
#include "look/view/AccentStyle.h"
#include "look/view/CssColor.h"

#include <gdkmm/display.h>
#include <giomm/resource.h>
#include <gtkmm/cssprovider.h>
#include <gtkmm/stylecontext.h>

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace orvu {
namespace {

/// The sheets of the program's resources, in the order in which they are read.
constexpr std::array sheets{
#include "look/StyleSheets.inc"
};

std::string define(std::string_view name, Color color) {
    return "@define-color " + std::string{name} + " " + cssColor(color) + ";\n";
}

/// How deep the widgets of a window may lie; the deepest are some 30 under it.
constexpr int deepest = 64;

/// Takes the desktop's theme from a window and all that stands in it, down to the pages: what the
/// engine itself puts over a page (lists, calendars, menus) isn't ours, and keeps the theme with
/// all the states that it shows. A selector can't leave out all that lies in an element, so there
/// is one for each depth that passes through none.
std::string resetRules() {
    std::string selectors;
    std::string selector = "window.orvu";
    for (int depth = 0; depth < deepest; ++depth) {
        selectors += (depth == 0 ? "" : ",\n") + selector;
        selector += " > :not(webkitwebview)";
    }
    return selectors + " { all: unset; }\n";
}

void install(const std::string& style, guint priority) {
    const auto provider = Gtk::CssProvider::create();
    provider->load_from_data(style);
    Gtk::StyleContext::add_provider_for_display(Gdk::Display::get_default(), provider, priority);
}

std::string resourceText(const std::string& sheet) {
    const auto bytes = Gio::Resource::lookup_data_global("/app/orvu/Orvu/style/" + sheet + ".css");
    gsize size = 0;
    const auto* const text = static_cast<const char*>(bytes->get_data(size));
    return {text, size};
}

}  // namespace

void installStyle(const std::vector<std::string>& rules) {
    const std::string colors = define("paper", Desk::paper) + define("ink", Desk::ink) +
                               define("muted", Desk::muted) + define("faint", Desk::faint) +
                               define("line", Desk::line) + define("blue", Desk::blue) +
                               define("black", Desk::black) + define("sky", Desk::sky);
    std::string style = colors;
    for (const char* const sheet : sheets) style += resourceText(sheet);
    style += accentRules();
    for (const std::string& more : rules) style += more;
    // Over the theme and the desktop's settings, under every rule of the sheets.
    install(resetRules(), GTK_STYLE_PROVIDER_PRIORITY_APPLICATION - 1);
    install(style, GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
}

}  // namespace orvu
