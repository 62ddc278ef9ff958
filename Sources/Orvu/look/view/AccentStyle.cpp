#include "look/view/AccentStyle.h"

#include "look/controls/IconButtonStyle.h"
#include "look/controls/PillButtonStyle.h"
#include "look/view/CssColor.h"
#include "profiles/ProfileLook.h"

#include <gtkmm/root.h>

namespace orvu {
namespace {

std::string rule(const std::string& selector, Color ground, Color label) {
    return selector + " { background: " + cssColor(ground) + "; color: " + cssColor(label) +
           "; }\n";
}

std::string rulesFor(const std::string& window, Color accent) {
    const PillButtonStyle pill{PillButtonStyle::Kind::prominent, accent};
    const IconButtonStyle icon{.active = true, .accent = accent};
    return rule(window + " .pill.prominent", pill.ground().color, pill.label()) +
           rule(window + " .icon-button.active", icon.ground().color, icon.symbol().color) +
           rule(window + " .onboarding-mark.reached", accent, accent);
}

}  // namespace

Color accentOf(const Gtk::Widget& widget) {
    const auto* const root = dynamic_cast<const Gtk::Widget*>(widget.get_root());
    if (!root) return AccentKey::defaultValue;
    for (std::size_t i = 0; i < ProfileLook::all.size(); ++i) {
        if (root->has_css_class("look-" + std::to_string(i))) return ProfileLook::all[i].color;
    }
    return AccentKey::defaultValue;
}

std::string accentRules() {
    std::string rules = rulesFor(".orvu", AccentKey::defaultValue);
    for (std::size_t i = 0; i < ProfileLook::all.size(); ++i) {
        rules += rulesFor(".orvu.look-" + std::to_string(i), ProfileLook::all[i].color);
    }
    return rules;
}

}  // namespace orvu
