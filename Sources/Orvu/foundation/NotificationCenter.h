#pragma once

#include "foundation/Signal.h"

#include <map>
#include <string>
#include <string_view>

namespace orvu {

/// Named broadcasts within the process. Observers run at once, on the poster's stack, in the
/// order in which they were added.
class NotificationCenter {
public:
    /// Calls `observer` at each `post` of `name` until the connection ends.
    sigc::connection addObserver(std::string_view name, const sigc::slot<void()>& observer);
    void post(std::string_view name);

private:
    std::map<std::string, sigc::signal<void()>, std::less<>> signals_;
};

}  // namespace orvu
