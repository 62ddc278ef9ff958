#pragma once

#include "notch/AddressNotch.h"

namespace orvu {

/// What a window keeps for its notch.
struct NotchSwitches {
    Observable<bool> ownCommandOpen{false};
    Observable<std::string> ownQuery;
};

/// A notch without a window around it.
class OwnNotch : private NotchSwitches, public AddressNotch {
public:
    OwnNotch() : AddressNotch(ownCommandOpen, ownQuery) {}
};

}  // namespace orvu
