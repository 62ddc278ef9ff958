#pragma once

#include "platform/linux/GObjectPointer.h"

#include <gio/gio.h>

namespace orvu {

/// Whether a socket's address is one of the world, see `isPublicAddress`.
[[nodiscard]] bool isPublic(GInetAddress* address);
/// A host that is looked up as ever, of whose addresses only those of the world are connected to;
/// without one of these there is an error. A certificate is held against the host's name.
[[nodiscard]] GObjectPointer<GSocketConnectable> guardedAddress(const char* host, guint16 port);

}  // namespace orvu
