#pragma once

#include "platform/ImageCodec.h"
#include "platform/linux/Worker.h"

namespace orvu {

/// PNG, JPEG, GIF, ICO, BMP and SVG, by their content and not by what anybody calls them. Pictures
/// of more than `maxDeclaredSide` pixels on a side are refused before their pixels are read.
class PixbufImageCodec : public ImageCodec {
public:
    static constexpr int maxDeclaredSide = 4096;
    static constexpr Worker::Limits limits{.deadline = std::chrono::seconds{5}, .abandoned = 4};

    /// `loop` must outlive the codec.
    explicit PixbufImageCodec(MainLoop& loop) : room_(loop, Worker::AtEnd::forget, limits) {}

    [[nodiscard]] Future<ImagePointer> decode(std::string bytes) override;
    [[nodiscard]] Future<std::string> encodePng(ImagePointer image) override;

    /// What `decode` does in its thread.
    [[nodiscard]] static ImagePointer decoded(const std::string& bytes);

private:
    Worker room_;
};

}  // namespace orvu
