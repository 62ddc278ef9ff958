#pragma once

#include <gio/gio.h>

namespace orvu {

/// Lets a start of the program that hands over to a running one pass on the token with which the
/// running one's window may come to the front on a Wayland display. Who starts a program gives it
/// in `XDG_ACTIVATION_TOKEN`, which this toolkit doesn't pass on. Holds for all applications of
/// the type of `application`.
void passOnActivationToken(GApplication* application);

}  // namespace orvu
