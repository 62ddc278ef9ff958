#include "pagetools/view/ReaderThemeRules.h"

#include "look/drawing/view/Drawing.h"
#include "profiles/ReaderTheme.h"

namespace orvu {

std::string readerThemeRules() {
    std::string rules;
    for (const ReaderThemeFacts& facts : readerThemes) {
        const std::string name{facts.rawValue};
        const std::string background = rgba({facts.background}).to_string();
        rules += ".orvu .reader-" + name + " { background: " + background +
                 "; color: " + rgba({facts.ink}).to_string() + "; }\n";
        rules += ".orvu .reader-swatch-" + name + " { background: " + background + "; }\n";
    }
    return rules;
}

}  // namespace orvu
