#pragma once

#include "update/Updater.h"

#include <chrono>
#include <string>
#include <string_view>

namespace orvu {

/// The small control in the top bar that shows an update under way.
class UpdatePill {
public:
    struct Look {
        enum class Kind { nothing, capsule, wheel };
        Kind kind = Kind::nothing;
        std::string_view symbol{};
        std::string_view label{};
        std::string help{};
        bool pulses = false;  ///< a soft ring grows and fades around it

        friend bool operator==(const Look&, const Look&) = default;
    };
    enum class Action { none, download, restart };

    static constexpr std::chrono::milliseconds pulse{1600};  ///< easing out, again and again

    /// `updater` must outlive this.
    explicit UpdatePill(Updater& updater) : updater_(updater) {}

    [[nodiscard]] Look look() const;
    /// What a press does. A restart asks the pages first, then calls `Updater::installAndRestart`.
    [[nodiscard]] Action action() const;

private:
    Updater& updater_;
};

}  // namespace orvu
