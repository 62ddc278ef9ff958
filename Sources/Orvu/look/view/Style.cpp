#include "look/view/Style.h"

#include "core/TabGroup.h"
#include "look/Desk.h"
#include "look/view/AccentStyle.h"
#include "pagetools/view/ReaderThemeRules.h"

#include <gdkmm/display.h>
#include <giomm/resource.h>
#include <gtkmm/cssprovider.h>
#include <gtkmm/stylecontext.h>

#include <array>
#include <string>
#include <string_view>

namespace orvu {
namespace {

/// The sheets of the program's resources, in the order in which they are read.
constexpr std::array sheets{"base",      "buttons",  "top-bar",      "tab-column",
                            "page-area", "find",     "new-tab-page", "reader",
                            "notch",     "popovers", "downloads",    "rewind"};

std::string rgb(Color color) {
    return "rgb(" + std::to_string(color.red) + "," + std::to_string(color.green) + "," +
           std::to_string(color.blue) + ")";
}

std::string define(std::string_view name, Color color) {
    return "@define-color " + std::string{name} + " " + rgb(color) + ";\n";
}

/// The dots of groups in the groups' colours.
std::string groupColors() {
    std::string rules;
    for (std::size_t i = 0; i < TabGroup::groupColors.size(); ++i) {
        rules += ".orvu .group-color-" + std::to_string(i) +
                 " { background: " + rgb(TabGroup::groupColors[i]) + "; }\n";
    }
    return rules;
}

std::string resourceText(const std::string& sheet) {
    const auto bytes = Gio::Resource::lookup_data_global("/app/orvu/Orvu/style/" + sheet + ".css");
    gsize size = 0;
    const auto* const text = static_cast<const char*>(bytes->get_data(size));
    return {text, size};
}

}  // namespace

void installStyle() {
    const std::string colors = define("paper", Desk::paper) + define("ink", Desk::ink) +
                               define("muted", Desk::muted) + define("faint", Desk::faint) +
                               define("line", Desk::line) + define("blue", Desk::blue) +
                               define("black", Desk::black) + define("sky", Desk::sky);
    std::string style = colors;
    for (const char* const sheet : sheets) style += resourceText(sheet);
    const auto provider = Gtk::CssProvider::create();
    provider->load_from_data(style + groupColors() + accentRules() + readerThemeRules());
    Gtk::StyleContext::add_provider_for_display(Gdk::Display::get_default(), provider,
                                                GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
}

}  // namespace orvu
