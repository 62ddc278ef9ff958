#include "site/icons/view/IconTexture.h"

#include <gdk-pixbuf/gdk-pixbuf.h>

#include <map>
#include <utility>

namespace orvu {
namespace {

GObjectPointer<GdkTexture> makeTexture(const Image& image, int side) {
    GBytes* const pixels = g_bytes_new_static(image.rgba.data(), image.rgba.size());
    const auto whole = GObjectPointer<GdkPixbuf>::adopt(gdk_pixbuf_new_from_bytes(
        pixels, GDK_COLORSPACE_RGB, TRUE, 8, image.width, image.height, image.width * 4));
    g_bytes_unref(pixels);
    // Scaled here, once, and with a filter that regards every pixel; the renderer's would not.
    const auto scaled = GObjectPointer<GdkPixbuf>::adopt(
        gdk_pixbuf_scale_simple(whole.get(), side, side, GDK_INTERP_BILINEAR));
    return GObjectPointer<GdkTexture>::adopt(gdk_texture_new_for_pixbuf(scaled.get()));
}

struct Entry {
    std::weak_ptr<const Image> image;
    std::weak_ptr<const GObjectPointer<GdkTexture>> texture;
};

}  // namespace

IconTexture iconTexture(const ImagePointer& image, int side) {
    static std::map<std::pair<const Image*, int>, Entry> entries;
    Entry& entry = entries[{image.get(), side}];
    // Another picture may have come to stand at the address of one that went.
    auto texture = entry.image.lock() == image ? entry.texture.lock() : nullptr;
    if (texture) return texture;
    texture = std::make_shared<const GObjectPointer<GdkTexture>>(makeTexture(*image, side));
    entry = {image, texture};
    std::erase_if(entries, [](const auto& each) { return each.second.texture.expired(); });
    return texture;
}

}  // namespace orvu
