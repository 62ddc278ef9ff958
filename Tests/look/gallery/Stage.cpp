#include "look/gallery/Stage.h"

#include <glibmm/main.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>

namespace orvu {

Picture::Picture(int width, int height, int scale)
    : surface_(Cairo::ImageSurface::create(Cairo::Surface::Format::ARGB32, width * scale,
                                           height * scale)) {
    const auto context = Cairo::Context::create(surface_);
    context->set_source_rgb(0, 0, 0);
    context->paint();
    cairo_surface_set_device_scale(surface_->cobj(), scale, scale);
}

Color Picture::at(int x, int y) const {
    surface_->flush();
    const unsigned char* const pixel = surface_->get_data() + y * surface_->get_stride() + x * 4;
    return {pixel[2], pixel[1], pixel[0]};
}

void Picture::keep(const std::string& name) const {
    const char* const folder = std::getenv("ORVU_ARTEFACTS");
    if (!folder) return;
    std::filesystem::create_directories(folder);
    surface_->write_to_png((std::filesystem::path{folder} / (name + ".png")).string());
}

namespace {

/// Lets styles and sizes settle, as they do at the end of a frame.
void waitForFrame(Gtk::Widget& widget) {
    int begun = 0;
    widget.add_tick_callback([&](const Glib::RefPtr<Gdk::FrameClock>&) { return ++begun < 2; });
    if (!waitUntil([&] { return begun == 2; })) std::abort();
}

}  // namespace

Stage::Stage(Gtk::Widget& child) {
    window_.add_css_class("orvu");
    window_.set_child(child);
    window_.present();
    if (!waitUntil([&] { return child.get_mapped() && child.get_width() > 0; })) std::abort();
}

Stage::~Stage() {
    window_.unset_child();
    window_.destroy();
}

Picture Stage::draw(Gtk::Widget& widget, int width, int height, int scale) {
    widget.queue_draw();
    waitForFrame(widget);
    Picture picture{width, height, scale};
    GdkPaintable* const paintable = gtk_widget_paintable_new(widget.gobj());
    GtkSnapshot* const snapshot = gtk_snapshot_new();
    gdk_paintable_snapshot(paintable, snapshot, width, height);
    GskRenderNode* const node = gtk_snapshot_free_to_node(snapshot);
    if (node) {
        const auto context = Cairo::Context::create(picture.surface());
        gsk_render_node_draw(node, context->cobj());
        gsk_render_node_unref(node);
    }
    g_object_unref(paintable);
    return picture;
}

bool waitUntil(const std::function<bool()>& condition) {
    const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds{10};
    // Wakes the loop where nothing else would, so that the limit is noticed.
    auto alarm = Glib::signal_timeout().connect([] { return true; }, 20);
    while (!condition() && std::chrono::steady_clock::now() < limit) {
        Glib::MainContext::get_default()->iteration(true);
    }
    alarm.disconnect();
    return condition();
}

}  // namespace orvu
