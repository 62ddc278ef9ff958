#pragma once

#include "platform/Navigation.h"

#include <webkit/webkit.h>

namespace orvu {

/// The engine's navigation action as a plain value.
[[nodiscard]] NavigationAction navigationAction(WebKitNavigationAction* action);
/// The engine's response as a plain value.
[[nodiscard]] NavigationResponse navigationResponse(WebKitResponsePolicyDecision* decision);

}  // namespace orvu
