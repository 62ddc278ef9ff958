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

void stopCapture(WebKitWebView* view, CaptureKind kind) {
    if (kind == CaptureKind::camera) {
        webkit_web_view_set_camera_capture_state(view, WEBKIT_MEDIA_CAPTURE_STATE_NONE);
    } else {
        webkit_web_view_set_microphone_capture_state(view, WEBKIT_MEDIA_CAPTURE_STATE_NONE);
    }
}

}  // namespace orvu
