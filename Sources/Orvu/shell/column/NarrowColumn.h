#pragma once

#include "platform/UserDefaults.h"
#include "profiles/Preferences.h"

#include <sigc++/sigc++.h>

namespace orvu {

/// Whether the column of tabs of one window shows icons only. It starts as the setting says; a
/// change is the window's own and is not stored.
class NarrowColumn {
public:
    static constexpr int wideWidth = 228;
    static constexpr int narrowWidth = 52;

    explicit NarrowColumn(const UserDefaults& defaults)
        : narrow_(Prefs::boolean(defaults, "narrowTabs", false)) {}

    [[nodiscard]] bool isNarrow() const { return narrow_; }
    [[nodiscard]] int width() const { return narrow_ ? narrowWidth : wideWidth; }

    void toggle() {
        narrow_ = !narrow_;
        changed_.emit();
    }
    sigc::connection connectChanged(const sigc::slot<void()>& slot) {
        return changed_.connect(slot);
    }

private:
    bool narrow_;
    sigc::signal<void()> changed_;
};

}  // namespace orvu
