#include "shell/column/view/TabIcon.h"

#include "look/view/Accessible.h"

#include <gtkmm/snapshot.h>
#include <gtkmm/stylecontext.h>

#include <algorithm>
#include <numbers>

namespace orvu {

TabIcon::TabIcon(const BrowserStore& store) : badge_(store.icons(), badgeSize) {
    add_css_class("tab-icon");
    hideFromAccessibility(*this);
    set_valign(Gtk::Align::CENTER);
    badge_.set_parent(*this);
}

TabIcon::~TabIcon() { badge_.unparent(); }

void TabIcon::show(const BrowserTab& tab) {
    constexpr double minimumRing = 0.1;  // a load shows from its first moment
    badge_.set(tab.host(), tab.favicon());
    const double ring = tab.isLoading() ? std::clamp(tab.progress(), minimumRing, 1.0) : 0;
    if (ring == ring_) return;
    ring_ = ring;
    queue_draw();
}

void TabIcon::measure_vfunc(Gtk::Orientation, int, int& minimum, int& natural, int& minimumBaseline,
                            int& naturalBaseline) const {
    minimum = natural = frame;
    minimumBaseline = naturalBaseline = -1;
}

void TabIcon::size_allocate_vfunc(int width, int height, int baseline) {
    badge_.size_allocate({(width - badgeSize) / 2, (height - badgeSize) / 2, badgeSize, badgeSize},
                         baseline);
}

void TabIcon::snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) {
    snapshot_child(badge_, snapshot);
    if (ring_ > 0) drawRing(snapshot->gobj());
}

void TabIcon::drawRing(GtkSnapshot* snapshot) {
    constexpr double stroke = 2;
    constexpr double middle = frame / 2.0;
    constexpr double top = -std::numbers::pi / 2;
    graphene_rect_t bounds;
    graphene_rect_init(&bounds, 0, 0, frame, frame);
    GdkRGBA color;
    gtk_style_context_get_color(get_style_context()->gobj(), &color);
    cairo_t* const context = gtk_snapshot_append_cairo(snapshot, &bounds);
    gdk_cairo_set_source_rgba(context, &color);
    cairo_set_line_width(context, stroke);
    cairo_set_line_cap(context, CAIRO_LINE_CAP_ROUND);
    cairo_arc(context, middle, middle, middle - stroke / 2, top,
              top + 2 * std::numbers::pi * ring_);
    cairo_stroke(context);
    cairo_destroy(context);
}

}  // namespace orvu
