#include "platform/linux/images/decoder/PictureDecoding.h"

#include "platform/ImageCodec.h"
#include "platform/linux/GObjectPointer.h"

#include <gdk-pixbuf/gdk-pixbuf.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace orvu {
namespace {

using namespace std::string_view_literals;

constexpr auto pngSignature = "\x89PNG\r\n\x1A\n"sv;

/// Whether a drawing holds nothing that the limits of this codec would not reach: pictures within
/// it, entities that stand for others, and encodings in which these could hide.
bool isPlainSvg(std::string_view text) {
    constexpr auto declarationLimit = 256;
    if (!g_utf8_validate(text.data(), static_cast<gssize>(text.size()), nullptr)) return false;
    std::string head{text.substr(0, declarationLimit)};
    std::ranges::transform(head, head.begin(), g_ascii_tolower);
    if (const auto at = head.find("encoding"); at != std::string::npos && at < head.find("?>")) {
        if (head.find("utf-8", at) > head.find("?>")) return false;
    }
    constexpr std::array refused{"<!ENTITY"sv, "<image"sv, ":image"sv, "feImage"sv};
    return std::ranges::none_of(refused, [&](auto each) { return text.contains(each); });
}

/// The library's name for the kind of file, by its first bytes; nullptr for one that is not read.
const char* kindOf(std::string_view bytes) {
    constexpr std::size_t svgHead = 4096;
    if (bytes.starts_with(pngSignature)) return "png";
    if (bytes.starts_with("\xFF\xD8\xFF"sv)) return "jpeg";
    if (bytes.starts_with("GIF87a"sv) || bytes.starts_with("GIF89a"sv)) return "gif";
    if (bytes.starts_with("\0\0\1\0"sv)) return "ico";
    if (bytes.starts_with("BM"sv)) return "bmp";
    const bool isSvg = bytes.substr(0, svgHead).contains("<svg");
    return isSvg && isPlainSvg(bytes) ? "svg" : nullptr;
}

std::size_t littleEndian(std::string_view bytes, std::size_t at, std::size_t count) {
    std::size_t value = 0;
    for (std::size_t i = count; i-- > 0;) {
        value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
    }
    return value;
}

/// The largest picture within an icon file, if it is a PNG file of its own, which the library does
/// not read there; else empty.
std::string_view largestPngOf(std::string_view ico) {
    constexpr std::size_t headSize = 6;
    constexpr std::size_t entrySize = 16;
    std::string_view largest;
    std::size_t largestSide = 0;
    const std::size_t count = ico.size() >= headSize ? littleEndian(ico, 4, 2) : 0;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t at = headSize + i * entrySize;
        if (at + entrySize > ico.size()) break;
        std::size_t side = littleEndian(ico, at, 1);
        if (side == 0) side = 256;  // which takes one bit more than there is room for
        const std::size_t offset = littleEndian(ico, at + 12, 4);
        if (side <= largestSide || offset > ico.size()) continue;
        largestSide = side;
        largest = ico.substr(offset, littleEndian(ico, at + 8, 4));
    }
    return largest.starts_with(pngSignature) ? largest : std::string_view{};
}

/// Drawings come at the largest size, for they have none of their own; other pictures are only
/// made smaller. A size of nothing makes the library end before it takes memory for pixels.
void chooseSize(GdkPixbufLoader* loader, int width, int height, gpointer isDrawing) {
    const bool isTooLarge = !isDrawing && std::max(width, height) > maxDeclaredSide;
    if (width <= 0 || height <= 0 || isTooLarge) {
        return gdk_pixbuf_loader_set_size(loader, 0, 0);
    }
    const double fit = static_cast<double>(ImageCodec::maxSide) / std::max(width, height);
    if (fit >= 1 && !isDrawing) return;
    const auto scaled = [fit](int length) {
        return std::max(1, static_cast<int>(std::lround(length * fit)));
    };
    gdk_pixbuf_loader_set_size(loader, scaled(width), scaled(height));
}

ImagePointer imageOf(const GdkPixbuf* pixbuf) {
    const int width = gdk_pixbuf_get_width(pixbuf);
    const int height = gdk_pixbuf_get_height(pixbuf);
    const int channels = gdk_pixbuf_get_n_channels(pixbuf);
    if (width <= 0 || height <= 0 || std::max(width, height) > ImageCodec::maxSide) return {};
    const auto image = std::make_shared<Image>(Image{width, height, {}});
    image->rgba.reserve(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4);
    const std::ptrdiff_t stride = gdk_pixbuf_get_rowstride(pixbuf);
    for (int y = 0; y < height; ++y) {
        const auto* pixel = gdk_pixbuf_read_pixels(pixbuf) + y * stride;
        for (int x = 0; x < width; ++x, pixel += channels) {
            image->rgba.insert(image->rgba.end(), pixel, pixel + 3);
            image->rgba.push_back(channels == 4 ? pixel[3] : 255);
        }
    }
    return image;
}

ImagePointer load(std::string_view bytes, const char* kind) {
    const auto loader =
        GObjectPointer<GdkPixbufLoader>::adopt(gdk_pixbuf_loader_new_with_type(kind, nullptr));
    if (!loader) return {};
    const bool isDrawing = kind == "svg"sv;
    g_signal_connect(loader.get(), "size-prepared", G_CALLBACK(chooseSize),
                     GINT_TO_POINTER(isDrawing ? 1 : 0));
    const bool written =
        gdk_pixbuf_loader_write(loader.get(), reinterpret_cast<const guchar*>(bytes.data()),
                                bytes.size(), nullptr) != FALSE;
    // In any case: a loader must not go without it.
    const bool closed = gdk_pixbuf_loader_close(loader.get(), nullptr) != FALSE;
    const GdkPixbuf* const pixbuf =
        written && closed ? gdk_pixbuf_loader_get_pixbuf(loader.get()) : nullptr;
    return pixbuf ? imageOf(pixbuf) : ImagePointer{};
}

}  // namespace

std::string encodedPng(const Image& image) {
    GBytes* const pixels = g_bytes_new_static(image.rgba.data(), image.rgba.size());
    const auto pixbuf = GObjectPointer<GdkPixbuf>::adopt(gdk_pixbuf_new_from_bytes(
        pixels, GDK_COLORSPACE_RGB, TRUE, 8, image.width, image.height, image.width * 4));
    g_bytes_unref(pixels);
    gchar* buffer = nullptr;
    gsize size = 0;
    if (!gdk_pixbuf_save_to_buffer(pixbuf.get(), &buffer, &size, "png", nullptr, nullptr))
        return "";
    std::string png{buffer, size};
    g_free(buffer);
    return png;
}

ImagePointer decodedPicture(std::string_view bytes) {
    const char* const kind = kindOf(bytes);
    if (!kind) return {};
    if (kind == "ico"sv) {
        const auto png = largestPngOf(bytes);
        if (!png.empty()) return load(png, "png");
    }
    return load(bytes, kind);
}

}  // namespace orvu
