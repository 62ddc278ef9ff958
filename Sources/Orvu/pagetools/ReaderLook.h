#pragma once

#include "foundation/Signal.h"
#include "profiles/Settings.h"

namespace orvu {

/// How the readers of all windows look: two settings, the limits of one and the signals of both.
class ReaderLook {
public:
    static constexpr double smallest = 14;
    static constexpr double largest = 26;

    /// `settings` must outlive this.
    explicit ReaderLook(Settings& settings);

    /// The size of the text in points, as stored: it may lie outside of the two limits.
    [[nodiscard]] double size() const { return settings_.readerSize.get(); }
    [[nodiscard]] ReaderTheme theme() const { return settings_.readerTheme.get(); }

    /// One point smaller or larger, and in any case within the limits afterwards.
    void smaller() { setSize(size() - 1); }
    void larger() { setSize(size() + 1); }
    void setTheme(ReaderTheme theme);

    /// Calls `slot` after each change.
    sigc::connection connectChanged(const sigc::slot<void()>& slot) {
        return changed_.connect(slot);
    }

private:
    void setSize(double size);

    Settings& settings_;
    sigc::signal<void()> changed_;
    ScopedConnection sizeChanged_;
    ScopedConnection themeChanged_;
};

}  // namespace orvu
