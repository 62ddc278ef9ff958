#include "site/permissions/CaptureSign.h"

namespace orvu {
namespace {

CaptureSign sign(const std::string& subject, const std::string& object) {
    return {subject + " in use. Stop", subject + " in use: click to stop", "Stop " + object};
}

}  // namespace

CaptureSign CaptureSign::of(ActiveCapture capture) {
    if (capture.camera && capture.microphone) {
        return sign("Camera and microphone", "Camera and Microphone");
    }
    if (capture.camera) return sign("Camera", "Camera");
    if (capture.microphone) return sign("Microphone", "Microphone");
    return {};
}

}  // namespace orvu
