#pragma once

#include <sigc++/sigc++.h>

namespace orvu {

/// While one of these lives, something in a window moves by itself. There is one count for the whole
/// program, of the main thread.
class Moving {
public:
    Moving();
    Moving(const Moving&) = delete;
    Moving& operator=(const Moving&) = delete;
    ~Moving();

    [[nodiscard]] static bool any();
    /// Hears of the first that begins and of the last that ends.
    static sigc::connection connectChanged(const sigc::slot<void()>& slot);
};

}  // namespace orvu
