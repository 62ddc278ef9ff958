#include "pagetools/ReaderLook.h"

#include <algorithm>

namespace orvu {

ReaderLook::ReaderLook(Settings& settings)
    : settings_(settings),
      sizeChanged_(settings.readerSize.connectChanged([this] { changed_.emit(); })),
      themeChanged_(settings.readerTheme.connectChanged([this] { changed_.emit(); })) {}

void ReaderLook::setSize(double size) {
    const double clamped = std::clamp(size, smallest, largest);
    if (clamped != this->size()) settings_.readerSize.set(clamped);
}

void ReaderLook::setTheme(ReaderTheme theme) {
    if (theme != this->theme()) settings_.readerTheme.set(theme);
}

}  // namespace orvu
