#include "shell/view/KestoPanelPlace.h"

#include "look/view/Keyboard.h"

#include <gtkmm/snapshot.h>

#include <algorithm>

namespace orvu {

KestoPanelPlace::Open::Open(BrowserView& view)
    : panel(view.sharedStore(), view.assistant().kesto, view.assistant().skills,
            view.services().settings(), view.pendingQuestion,
            [&view] { view.kestoOpen.set(false); }),
      widget(panel) {}

KestoPanelPlace::KestoPanelPlace(BrowserView& view)
    : view_(view), slide_(*this, Motion::open, 0, [this](double value) { step(value); }) {
    set_visible(false);
    set_overflow(Gtk::Overflow::HIDDEN);
    view_.kestoOpen.connectChanged(sigc::mem_fun(*this, &KestoPanelPlace::openChanged));
    if (isOpen()) openChanged();
}

KestoPanelPlace::~KestoPanelPlace() {
    notify_callbacks();
    drop();
}

void KestoPanelPlace::focusField() {
    if (open_) open_->widget.focusField();
}

void KestoPanelPlace::setHidden(bool hidden) {
    isHidden_ = hidden;
    set_visible(open_ && !isHidden_);
}

void KestoPanelPlace::openChanged() {
    if (!isOpen()) {
        if (!open_) return;
        open_->widget.set_can_target(false);
        if (holdsKeyboard(open_->widget)) view_.focusPage();
        open_->widget.set_can_focus(false);
        slide_.animateTo(0);
        return;
    }
    drop();
    open_ = std::make_unique<Open>(view_);
    open_->widget.set_parent(*this);
    set_visible(!isHidden_);
    slide_.animateTo(1);
    focusField();
}

void KestoPanelPlace::step(double value) {
    if (!isOpen() && value <= 0) return drop();
    queue_draw();
}

void KestoPanelPlace::drop() {
    if (!open_) return;
    open_->widget.unparent();
    open_.reset();
    set_visible(false);
}

Gtk::SizeRequestMode KestoPanelPlace::get_request_mode_vfunc() const {
    return Gtk::SizeRequestMode::CONSTANT_SIZE;
}

/// Its size is given from outside, however much stands in it, so that is not measured: a long answer
/// takes its time, and would be measured for several widths.
void KestoPanelPlace::measure_vfunc(Gtk::Orientation orientation, int, int& minimum, int& natural,
                                    int& minimumBaseline, int& naturalBaseline) const {
    const bool across = orientation == Gtk::Orientation::HORIZONTAL;
    minimum = natural = open_ && across ? KestoPanelView::width : 0;
    minimumBaseline = naturalBaseline = -1;
}

void KestoPanelPlace::size_allocate_vfunc(int width, int height, int baseline) {
    if (!open_) return;
    // The toolkit wants it asked before.
    int least = 0;
    int natural = 0;
    int none = 0;
    open_->widget.measure(Gtk::Orientation::HORIZONTAL, -1, least, natural, none, none);
    open_->widget.size_allocate({0, 0, width, height}, baseline);
}

void KestoPanelPlace::snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) {
    if (!open_) return;
    const double shown = std::clamp(slide_.value(), 0.0, 1.0);
    GtkSnapshot* const target = snapshot->gobj();
    const graphene_point_t shift{static_cast<float>((1 - slide_.value()) * get_width()), 0};
    gtk_snapshot_push_opacity(target, shown);
    gtk_snapshot_save(target);
    gtk_snapshot_translate(target, &shift);
    snapshot_child(open_->widget, snapshot);
    gtk_snapshot_restore(target);
    gtk_snapshot_pop(target);
}

}  // namespace orvu
