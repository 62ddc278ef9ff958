#include "pagetools/ReaderLook.h"

#include <algorithm>
#include <cmath>

namespace orvu {

double ReaderLook::size() const {
    const double stored = defaults_.number("readerSize").value_or(usual);
    return std::isfinite(stored) ? stored : usual;
}

ReaderTheme ReaderLook::theme() const {
    const auto stored = defaults_.string("readerTheme").value_or("");
    const auto found = std::ranges::find(readerThemes, stored, &ReaderThemeFacts::rawValue);
    return found != readerThemes.end() ? found->theme : ReaderTheme::paper;
}

void ReaderLook::setSize(double size) {
    const double wanted = std::clamp(size, smallest, largest);
    if (wanted == this->size()) return;
    defaults_.setNumber("readerSize", wanted);
    changed_.emit();
}

void ReaderLook::setTheme(ReaderTheme theme) {
    if (theme == this->theme()) return;
    defaults_.setString("readerTheme", facts(theme).rawValue);
    changed_.emit();
}

}  // namespace orvu
