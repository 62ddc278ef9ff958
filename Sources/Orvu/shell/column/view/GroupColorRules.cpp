#include "shell/column/view/GroupColorRules.h"

#include "core/TabGroup.h"
#include "look/view/CssColor.h"

namespace orvu {

std::string groupColorRules() {
    std::string rules;
    for (std::size_t i = 0; i < TabGroup::groupColors.size(); ++i) {
        rules += ".orvu .group-color-" + std::to_string(i) +
                 " { background: " + cssColor(TabGroup::groupColors[i]) + "; }\n";
    }
    return rules;
}

}  // namespace orvu
