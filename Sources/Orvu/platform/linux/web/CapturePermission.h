#pragma once

#include "platform/MediaCapture.h"
#include "platform/RefusedPermission.h"

#include <webkit/webkit.h>

#include <optional>
#include <string>

namespace orvu {

/// The engine's request as a value, if it is for the camera or the microphone; `host` is that of
/// the page which asks. Nothing for all else: places, notifications, the screen.
[[nodiscard]] std::optional<MediaCaptureRequest> mediaCaptureRequest(
    WebKitPermissionRequest* request, std::string host);

/// What else a page asks for; nothing for what the engine asks by itself.
[[nodiscard]] std::optional<RefusedPermission> refusedPermission(WebKitPermissionRequest* request);

/// What a page captures now.
[[nodiscard]] ActiveCapture activeCapture(WebKitWebView* view);
/// Ends what a page captures, and lets it ask anew.
void stopCapture(WebKitWebView* view, CaptureKind kind);

}  // namespace orvu
