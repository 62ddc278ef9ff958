#include "pagetools/view/ReaderThemeRules.h"

#include "look/drawing/view/Drawing.h"
#include "profiles/ReaderTheme.h"

namespace orvu {

std::string readerThemeRules() {
    std::string rules;
    for (const ReaderThemeFacts& facts : readerThemes) {
        const std::string name{facts.rawValue};
        const std::string background = rgba({facts.background}).to_string();
        rules.append(".orvu .reader-").append(name).append(" { background: ").append(background);
        rules.append("; color: ").append(rgba({facts.ink}).to_string()).append("; }\n");
        rules.append(".orvu .reader-swatch-").append(name);
        rules.append(" { background: ").append(background).append("; }\n");
    }
    return rules;
}

}  // namespace orvu
