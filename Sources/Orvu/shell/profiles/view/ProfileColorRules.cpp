#include "shell/profiles/view/ProfileColorRules.h"

#include "look/view/CssColor.h"
#include "profiles/ProfileLook.h"

#include <algorithm>
#include <string_view>

namespace orvu {

std::string profileColorRules() {
    std::string rules;
    for (const ProfileLook& look : ProfileLook::all) {
        const std::string any = ".orvu ." + profileColorClass(look.color);
        const auto rule = [&](std::string_view what, std::string_view property) {
            rules.append(any).append(what).append(" { ").append(property).append(": ");
            rules.append(cssColor(look.color)).append("; }\n");
        };
        rule(".profile-ground", "background");
        rule(".profile-tile", "color");
        rule(".profile-tile.shown", "color: white; background");
        rule(".profile-ring.shown", "border-color");
        rule(".profile-ring:selected", "border-color");
        rule(" .profile-cell:selected", "color: white; background");
    }
    return rules;
}

std::string profileColorClass(Color color) {
    const auto& looks = ProfileLook::all;
    const auto look = std::ranges::find(looks, color, &ProfileLook::color);
    return "profile-color-" + std::to_string(look - looks.begin());
}

}  // namespace orvu
