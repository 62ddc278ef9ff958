#pragma once

#include "foundation/Url.h"

#include <webkit/webkit.h>

#include <functional>

namespace orvu {

/// Puts "Open in New Tab" where the engine's menu over a link offers a window of its own; `open`
/// is called with the link when it is chosen, which may be after the page has gone.
void offerNewTab(WebKitContextMenu* menu, WebKitHitTestResult* hit,
                 std::function<void(const Url&)> open);

/// Calls `chosen` when an item of the page's menu that saves something is chosen.
void watchSaving(WebKitContextMenu* menu, std::function<void()> chosen);

}  // namespace orvu
