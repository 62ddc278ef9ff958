#include "notch/view/Entrance.h"

#include "look/motion/BlurFade.h"

#include <algorithm>

namespace orvu {
namespace {

constexpr double smallest = 0.97;
constexpr BlurFade fade{10};
/// From here on nobody sees a difference, and the blur need not be computed.
constexpr double asGoodAsThere = 0.995;

}  // namespace

void drawEntrance(const Glib::RefPtr<Gtk::Snapshot>& snapshot, double progress, double width,
                  const std::function<void()>& draw) {
    const double shown = std::clamp(progress, 0.0, 1.0);
    if (shown > asGoodAsThere) {
        draw();
        return;
    }
    if (shown == 0) return;
    const auto step = fade.at(shown);
    const auto scale = static_cast<float>(smallest + (1 - smallest) * shown);
    GtkSnapshot* const target = snapshot->gobj();
    gtk_snapshot_save(target);
    const graphene_point_t middle{static_cast<float>(width / 2), 0};
    const graphene_point_t back{-middle.x, 0};
    gtk_snapshot_translate(target, &middle);
    gtk_snapshot_scale(target, scale, scale);
    gtk_snapshot_translate(target, &back);
    gtk_snapshot_push_opacity(target, step.opacity);
    gtk_snapshot_push_blur(target, step.radius);
    draw();
    gtk_snapshot_pop(target);
    gtk_snapshot_pop(target);
    gtk_snapshot_restore(target);
}

}  // namespace orvu
