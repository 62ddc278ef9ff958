#pragma once

#include "platform/ImageCodec.h"
#include "platform/linux/WorkRoom.h"

namespace orvu {

/// PNG, JPEG, GIF, ICO, BMP and SVG, by their content and not by what anybody calls them. Pictures
/// of more than `longestDeclaredSide` pixels on a side are refused before their pixels are read.
class PixbufImageCodec : public ImageCodec {
public:
    static constexpr int longestDeclaredSide = 4096;
    static constexpr WorkRoom::Limits limits{.deadline = std::chrono::seconds{5}, .leftAlone = 4};

    /// `loop` must outlive the codec.
    explicit PixbufImageCodec(MainLoop& loop) : room_(loop, WorkRoom::AtEnd::forget, limits) {}

    [[nodiscard]] Future<ImagePointer> decode(std::string bytes) override;
    [[nodiscard]] Future<std::string> encodePng(ImagePointer image) override;

    /// What `decode` does in its thread.
    [[nodiscard]] static ImagePointer decoded(const std::string& bytes);

private:
    WorkRoom room_;
};

}  // namespace orvu
