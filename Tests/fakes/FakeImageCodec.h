#pragma once

#include "platform/ImageCodec.h"

#include <string>
#include <string_view>

namespace orvu {

/// Knows one format: "img " and a name, which are the picture's bytes. All else is no picture.
class FakeImageCodec : public ImageCodec {
public:
    [[nodiscard]] static ImagePointer image(std::string_view name) {
        return std::make_shared<Image>(Image{1, 1, {name.begin(), name.end()}});
    }
    /// The name of a picture; empty for none.
    [[nodiscard]] static std::string name(const ImagePointer& image) {
        return image ? std::string{image->rgba.begin(), image->rgba.end()} : "";
    }

    [[nodiscard]] Future<ImagePointer> decode(std::string bytes) override {
        ++decoded;
        const Promise<ImagePointer> promise;
        promise.resolve(bytes.starts_with("img ") ? image(std::string_view{bytes}.substr(4))
                                                  : nullptr);
        return promise.future();
    }
    [[nodiscard]] Future<std::string> encodePng(ImagePointer image) override {
        const Promise<std::string> promise;
        promise.resolve(refusesToEncode ? "" : "img " + name(image));
        return promise.future();
    }

    int decoded = 0;
    bool refusesToEncode = false;
};

}  // namespace orvu
