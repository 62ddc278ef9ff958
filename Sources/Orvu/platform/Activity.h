#pragma once

#include "foundation/Date.h"
#include "foundation/Signal.h"

namespace orvu {

/// What the person is doing just now, so that work which stands the window still can wait for a
/// better moment.
class Activity {
public:
    /// A key or a button was pressed.
    void pressed(Date now) { lastPress_ = now; }
    /// Whether anything of the windows' own moves: what pages do doesn't count.
    void setMoving(bool moving) {
        if (moving == isMoving_) return;
        isMoving_ = moving;
        changed_.emit();
    }

    [[nodiscard]] Date lastPress() const { return lastPress_; }
    [[nodiscard]] bool isMoving() const { return isMoving_; }
    /// Hears when something begins to move and when all has come to rest.
    sigc::connection connectChanged(const sigc::slot<void()>& slot) {
        return changed_.connect(slot);
    }

private:
    Date lastPress_ = Date::distantPast();
    bool isMoving_ = false;
    sigc::signal<void()> changed_;
};

}  // namespace orvu
