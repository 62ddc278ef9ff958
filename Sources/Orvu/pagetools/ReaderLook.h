#pragma once

#include "pagetools/ReaderTheme.h"
#include "platform/UserDefaults.h"

#include <sigc++/sigc++.h>

namespace orvu {

/// How the readers of all windows look: settings, written with each change.
class ReaderLook {
public:
    static constexpr double smallest = 14;
    static constexpr double largest = 26;
    static constexpr double usual = 18;

    /// `defaults` must outlive this.
    explicit ReaderLook(UserDefaults& defaults) : defaults_(defaults) {}

    /// The size of the text in points, as stored: it may lie outside of the two limits.
    [[nodiscard]] double size() const;
    [[nodiscard]] ReaderTheme theme() const;

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

    UserDefaults& defaults_;
    sigc::signal<void()> changed_;
};

}  // namespace orvu
