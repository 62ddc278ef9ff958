#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace orvu {

/// What a page can listen or look with.
enum class CaptureKind { camera, microphone };

/// What is on at one moment.
struct ActiveCapture {
    bool camera = false;
    bool microphone = false;

    [[nodiscard]] bool any() const { return camera || microphone; }
    [[nodiscard]] bool has(CaptureKind kind) const {
        return kind == CaptureKind::camera ? camera : microphone;
    }
    /// What is on in the one or the other.
    friend ActiveCapture operator|(ActiveCapture one, ActiveCapture other) {
        return {one.camera || other.camera, one.microphone || other.microphone};
    }
    friend bool operator==(const ActiveCapture&, const ActiveCapture&) = default;
};

/// What a page asks for at once.
enum class MediaCaptureType { camera, microphone, cameraAndMicrophone };

/// What is to become of a page's request.
enum class PermissionDecision {
    prompt,  ///< the person is to be asked
    grant,
    deny,
};

/// The kinds that a request of this type is for, the camera first.
[[nodiscard]] inline std::vector<CaptureKind> captureKinds(MediaCaptureType type) {
    switch (type) {
        case MediaCaptureType::camera:
            return {CaptureKind::camera};
        case MediaCaptureType::microphone:
            return {CaptureKind::microphone};
        case MediaCaptureType::cameraAndMicrophone:
            break;
    }
    return {CaptureKind::camera, CaptureKind::microphone};
}

/// A page waits to hear whether it may use the camera, the microphone or both. Whoever holds the
/// request answers it; one that goes unanswered is denied.
class MediaCaptureRequest {
public:
    enum class Answer { grant, deny };

    /// `host` is that of the page which asks; empty if it has none. `answer` is called once.
    MediaCaptureRequest(MediaCaptureType type, std::string host,
                        std::move_only_function<void(Answer)> answer)
        : type_(type), host_(std::move(host)), answer_(std::move(answer)) {}
    MediaCaptureRequest(MediaCaptureRequest&& other) noexcept
        : type_(other.type_),
          host_(std::move(other.host_)),
          answer_(std::exchange(other.answer_, nullptr)) {}
    MediaCaptureRequest& operator=(MediaCaptureRequest&& other) noexcept {
        if (this == &other) return *this;
        answer(Answer::deny);
        type_ = other.type_;
        host_ = std::move(other.host_);
        answer_ = std::exchange(other.answer_, nullptr);
        return *this;
    }
    ~MediaCaptureRequest() { answer(Answer::deny); }

    [[nodiscard]] MediaCaptureType type() const { return type_; }
    [[nodiscard]] const std::string& host() const { return host_; }

    /// Only the first answer counts.
    void answer(Answer answer) {
        if (auto give = std::exchange(answer_, nullptr)) give(answer);
    }

private:
    MediaCaptureType type_;
    std::string host_;
    std::move_only_function<void(Answer)> answer_;
};

}  // namespace orvu
