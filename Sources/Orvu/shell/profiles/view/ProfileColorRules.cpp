#include "shell/profiles/view/ProfileColorRules.h"

#include "look/view/CssColor.h"
#include "profiles/ProfileLook.h"

#include <algorithm>

namespace orvu {

std::string profileColorRules() {
    std::string rules;
    for (const ProfileLook& look : ProfileLook::all) {
        const std::string any = ".orvu ." + profileColorClass(look.color);
        const std::string color = cssColor(look.color);
        rules += any + ".profile-ground { background: " + color + "; }\n";
        rules += any + ".profile-tile { color: " + color + "; }\n";
        rules += any + ".profile-tile.shown { background: " + color + "; color: white; }\n";
        rules += any + ".profile-ring.shown, " + any + ".profile-ring:selected { border-color: " +
                 color + "; }\n";
        rules += any + " .profile-cell:selected { background: " + color + "; color: white; }\n";
    }
    return rules;
}

std::string profileColorClass(Color color) {
    const auto& looks = ProfileLook::all;
    const auto look = std::ranges::find(looks, color, &ProfileLook::color);
    return "profile-color-" + std::to_string(look - looks.begin());
}

}  // namespace orvu
