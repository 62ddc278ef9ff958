#pragma once

namespace orvu {

/// What pages ask for and never get.
enum class RefusedPermission {
    location,
    notifications,
    pointerLock,
    deviceNames,  ///< what the cameras and microphones are called
    clipboard,    ///< to read it
    screen,       ///< to capture it
    protectedMedia,
    otherSitesData,  ///< what a site stored, from within a page of another one
};

}  // namespace orvu
