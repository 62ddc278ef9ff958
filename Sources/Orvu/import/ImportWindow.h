#pragma once

#include "profiles/Profiles.h"

#include <optional>

namespace orvu {

/// The one window in which a person brings over what another browser has.
class ImportWindow {
public:
    virtual ~ImportWindow() = default;

    /// Brings the window to the front, begun afresh for a profile: the personal one if none is
    /// given.
    virtual void show(const std::optional<Profile>& profile) = 0;
};

}  // namespace orvu
