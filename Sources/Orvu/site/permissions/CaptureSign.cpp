#include "site/permissions/CaptureSign.h"

#include "foundation/text/Translation.h"

namespace orvu {
namespace {}  // namespace

CaptureSign CaptureSign::of(ActiveCapture capture) {
    if (capture.camera && capture.microphone) {
        return {phrase("Camera and microphone in use. Stop"),
                phrase("Camera and microphone in use: click to stop"),
                phrase("Stop Camera and Microphone")};
    }
    if (capture.camera) {
        return {phrase("Camera in use. Stop"), phrase("Camera in use: click to stop"),
                phrase("Stop Camera")};
    }
    if (capture.microphone) {
        return {phrase("Microphone in use. Stop"), phrase("Microphone in use: click to stop"),
                phrase("Stop Microphone")};
    }
    return {};
}

}  // namespace orvu
