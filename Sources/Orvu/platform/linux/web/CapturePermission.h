#pragma once

#include "platform/MediaCapture.h"

#include <webkit/webkit.h>

#include <optional>
#include <string>

namespace orvu {

/// The engine's request as a value, if it is for the camera or the microphone; `host` is that of
/// the page which asks. Nothing for all else: places, notifications, the screen.
[[nodiscard]] std::optional<MediaCaptureRequest> mediaCaptureRequest(
    WebKitPermissionRequest* request, std::string host);

/// Ends what a page captures, and lets it ask anew.
void stopCapture(WebKitWebView* view, CaptureKind kind);

}  // namespace orvu
