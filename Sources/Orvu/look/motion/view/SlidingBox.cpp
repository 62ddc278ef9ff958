#include "look/motion/view/SlidingBox.h"

#include "look/motion/view/WindowTicker.h"

#include <gdkmm/frameclock.h>
#include <gtkmm/snapshot.h>

namespace orvu {

SlidingBox::SlidingBox(Spring spring, int spacing)
    : Gtk::Box(Gtk::Orientation::VERTICAL, spacing), places_(spring) {
    signal_unmap().connect(sigc::mem_fun(*this, &SlidingBox::rest));
}

SlidingBox::~SlidingBox() {
    if (tick_ != 0) remove_tick_callback(tick_);
}

void SlidingBox::setKey(Gtk::Widget& line, std::string key) {
    keys_.insert_or_assign(&line, std::move(key));
}

void SlidingBox::rest() {
    if (tick_ != 0) remove_tick_callback(tick_);
    tick_ = 0;
    moving_.reset();
    places_.clear();
}

std::vector<SlidingPlaces::Line> SlidingBox::lines() const {
    std::vector<SlidingPlaces::Line> lines;
    for (const Gtk::Widget* child = get_first_child(); child; child = child->get_next_sibling()) {
        const auto key = keys_.find(child);
        if (key == keys_.end() || !child->get_visible()) continue;
        lines.push_back({key->second, static_cast<double>(child->get_allocation().get_y())});
    }
    return lines;
}

Seconds SlidingBox::frameTime() const {
    return std::chrono::microseconds{get_frame_clock()->get_frame_time()};
}

void SlidingBox::snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) {
    places_.moveTo(lines(), frameTime());
    if (!animationsEnabled()) places_.finish();
    for (Gtk::Widget* child = get_first_child(); child; child = child->get_next_sibling()) {
        draw(*child, snapshot);
    }
    keepMoving();
}

void SlidingBox::draw(Gtk::Widget& line, const Glib::RefPtr<Gtk::Snapshot>& snapshot) {
    const auto key = keys_.find(&line);
    const auto drawing =
        key == keys_.end() ? SlidingPlaces::Drawing{} : places_.at(key->second, frameTime());
    if (drawing.opacity <= 0) return;
    GtkSnapshot* const target = snapshot->gobj();
    const graphene_point_t shift{0, static_cast<float>(drawing.offset)};
    gtk_snapshot_save(target);
    gtk_snapshot_translate(target, &shift);
    if (drawing.opacity < 1) gtk_snapshot_push_opacity(target, drawing.opacity);
    snapshot_child(line, snapshot);
    if (drawing.opacity < 1) gtk_snapshot_pop(target);
    gtk_snapshot_restore(target);
}

void SlidingBox::keepMoving() {
    if (tick_ != 0 || !places_.isMoving(frameTime())) return;
    moving_.emplace();
    tick_ = add_tick_callback([this](const Glib::RefPtr<Gdk::FrameClock>&) {
        queue_draw();
        if (places_.isMoving(frameTime())) return true;
        tick_ = 0;
        moving_.reset();
        return false;
    });
}

}  // namespace orvu
