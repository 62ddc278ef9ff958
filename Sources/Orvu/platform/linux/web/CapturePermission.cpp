#include "platform/linux/web/CapturePermission.h"

#include "platform/linux/GObjectPointer.h"

#include <utility>

namespace orvu {
namespace {

std::optional<MediaCaptureType> captureType(WebKitPermissionRequest* request) {
    if (!WEBKIT_IS_USER_MEDIA_PERMISSION_REQUEST(request)) return std::nullopt;
    auto* const media = WEBKIT_USER_MEDIA_PERMISSION_REQUEST(request);
    if (webkit_user_media_permission_is_for_display_device(media)) return std::nullopt;
    const bool camera = webkit_user_media_permission_is_for_video_device(media) != FALSE;
    const bool microphone = webkit_user_media_permission_is_for_audio_device(media) != FALSE;
    if (camera && microphone) return MediaCaptureType::cameraAndMicrophone;
    if (camera) return MediaCaptureType::camera;
    if (microphone) return MediaCaptureType::microphone;
    return std::nullopt;
}

}  // namespace

std::optional<MediaCaptureRequest> mediaCaptureRequest(WebKitPermissionRequest* request,
                                                       std::string host) {
    const auto type = captureType(request);
    if (!type) return std::nullopt;
    return MediaCaptureRequest{*type, std::move(host),
                               [held = GObjectPointer<WebKitPermissionRequest>::retain(request)](
                                   MediaCaptureRequest::Answer answer) {
                                   if (answer == MediaCaptureRequest::Answer::grant) {
                                       webkit_permission_request_allow(held.get());
                                   } else {
                                       webkit_permission_request_deny(held.get());
                                   }
                               }};
}

std::optional<RefusedPermission> refusedPermission(WebKitPermissionRequest* request) {
    using enum RefusedPermission;
    if (WEBKIT_IS_GEOLOCATION_PERMISSION_REQUEST(request)) return location;
    if (WEBKIT_IS_NOTIFICATION_PERMISSION_REQUEST(request)) return notifications;
    if (WEBKIT_IS_POINTER_LOCK_PERMISSION_REQUEST(request)) return pointerLock;
    if (WEBKIT_IS_DEVICE_INFO_PERMISSION_REQUEST(request)) return deviceNames;
    if (WEBKIT_IS_CLIPBOARD_PERMISSION_REQUEST(request)) return clipboard;
    if (WEBKIT_IS_USER_MEDIA_PERMISSION_REQUEST(request)) return screen;
    if (WEBKIT_IS_MEDIA_KEY_SYSTEM_PERMISSION_REQUEST(request)) return protectedMedia;
    if (WEBKIT_IS_WEBSITE_DATA_ACCESS_PERMISSION_REQUEST(request)) return otherSitesData;
    return std::nullopt;
}

ActiveCapture activeCapture(WebKitWebView* view) {
    return {
        webkit_web_view_get_camera_capture_state(view) == WEBKIT_MEDIA_CAPTURE_STATE_ACTIVE,
        webkit_web_view_get_microphone_capture_state(view) == WEBKIT_MEDIA_CAPTURE_STATE_ACTIVE};
}

void stopCapture(WebKitWebView* view, CaptureKind kind) {
    if (kind == CaptureKind::camera) {
        webkit_web_view_set_camera_capture_state(view, WEBKIT_MEDIA_CAPTURE_STATE_NONE);
    } else {
        webkit_web_view_set_microphone_capture_state(view, WEBKIT_MEDIA_CAPTURE_STATE_NONE);
    }
}

}  // namespace orvu
