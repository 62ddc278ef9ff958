#include "platform/linux/images/DecoderMessages.h"

#include <cstring>
#include <memory>
#include <type_traits>

namespace orvu {
namespace {

using namespace std::string_view_literals;

static_assert(std::is_trivially_copyable_v<DecoderRequest> && sizeof(DecoderRequest) == 24);
static_assert(std::is_trivially_copyable_v<DecoderAnswer> && sizeof(DecoderAnswer) == 20);

/// How many bytes the pixels of a picture take; 0 for a size that no icon has.
std::uint32_t pixelBytes(std::uint32_t width, std::uint32_t height) {
    constexpr auto most = static_cast<std::uint32_t>(ImageCodec::maxSide);
    return width <= most && height <= most ? width * height * 4 : 0;
}

}  // namespace

bool DecoderRequest::isSound() const {
    if (magic != expectedMagic || length == 0 || length > maxLength) return false;
    if (kind == Kind::decode) return width == 0 && height == 0;
    return kind == Kind::encodePng && length == pixelBytes(width, height);
}

bool DecoderAnswerReader::isSound() const {
    if (head_->magic != DecoderAnswer::expectedMagic || head_->number != request_.number) {
        return false;
    }
    const bool hasSize = head_->width != 0 || head_->height != 0;
    if (head_->length == 0) return !hasSize;
    if (isGreeting_) return false;
    if (request_.kind == DecoderRequest::Kind::encodePng) {
        return !hasSize && head_->length <= DecoderAnswer::maxPngLength;
    }
    return head_->length == pixelBytes(head_->width, head_->height);
}

void DecoderAnswerReader::readHead() {
    if (bytes_.size() < sizeof(DecoderAnswer)) return;
    std::memcpy(&head_.emplace(), bytes_.data(), sizeof(DecoderAnswer));
    bytes_.erase(0, sizeof(DecoderAnswer));
    if (isSound()) {
        bytes_.reserve(head_->length);
    } else {
        state_ = State::broken;
    }
}

DecoderAnswerReader::State DecoderAnswerReader::add(std::string_view bytes) {
    if (bytes.empty() || state_ == State::broken) return state_;
    bytes_ += bytes;
    if (!head_) readHead();
    if (!head_ || state_ == State::broken) return state_;
    if (bytes_.size() > head_->length) {
        state_ = State::broken;
    } else if (bytes_.size() == head_->length) {
        state_ = State::complete;
    }
    return state_;
}

ImagePointer DecoderAnswerReader::image() const {
    if (state_ != State::complete || bytes_.empty()) return nullptr;
    return std::make_shared<Image>(Image{static_cast<int>(head_->width),
                                         static_cast<int>(head_->height),
                                         {bytes_.begin(), bytes_.end()}});
}

std::string DecoderAnswerReader::png() const {
    const bool isPng = state_ == State::complete && bytes_.starts_with("\x89PNG\r\n\x1A\n"sv);
    return isPng ? bytes_ : "";
}

}  // namespace orvu
