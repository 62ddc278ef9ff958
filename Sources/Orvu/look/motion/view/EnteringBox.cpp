#include "look/motion/view/EnteringBox.h"

#include <gtkmm/snapshot.h>

#include <algorithm>

namespace orvu {
namespace {

/// From here on nobody sees a difference, and nothing need be computed.
constexpr double asGoodAsThere = 0.995;

}  // namespace

EnteringBox::EnteringBox(Gtk::Orientation orientation, int spacing, Way way)
    : Gtk::Box(orientation, spacing),
      way_(way),
      progress_(*this, Motion::open, 1, [this](double) { queue_draw(); }) {}

void EnteringBox::enter() {
    progress_.jumpTo(0);
    progress_.animateTo(1);
}

void EnteringBox::on_map() {
    Gtk::Box::on_map();
    enter();
}

void EnteringBox::snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) {
    const double shown = std::clamp(progress_.value(), 0.0, 1.0);
    if (shown > asGoodAsThere) return Gtk::Box::snapshot_vfunc(snapshot);
    if (shown == 0) return;
    const double radius = way_.blur.at(shown).radius;
    GtkSnapshot* const target = snapshot->gobj();
    gtk_snapshot_save(target);
    const graphene_point_t above{0, static_cast<float>((shown - 1) * way_.fromTop * get_height())};
    gtk_snapshot_translate(target, &above);
    gtk_snapshot_push_opacity(target, shown);
    if (radius > 0) gtk_snapshot_push_blur(target, radius);
    Gtk::Box::snapshot_vfunc(snapshot);
    if (radius > 0) gtk_snapshot_pop(target);
    gtk_snapshot_pop(target);
    gtk_snapshot_restore(target);
}

}  // namespace orvu
