#include "look/view/DotFaceView.h"

#include "look/Desk.h"
#include "look/view/AccentStyle.h"
#include "look/view/Accessible.h"
#include "look/drawing/view/Drawing.h"
#include "look/motion/view/WindowTicker.h"

#include <glibmm/main.h>
#include <gtkmm/snapshot.h>

#include <algorithm>
#include <cmath>

namespace orvu {
namespace {

/// A moment between two blinks, for a face that stands still.
constexpr double stillTicks = 2;

double extent(int count, double dot, double gap) { return dot * count + gap * (count - 1); }

}  // namespace

DotFaceView::DotFaceView(double dot, double gap, Clock clock)
    : dot_(dot), gap_(gap), clock_(std::move(clock)) {
    add_css_class("dot-face");
    g_object_set(gobj(), "accessible-role", GTK_ACCESSIBLE_ROLE_IMG, nullptr);
    setAccessibleLabel(*this, "Kesto");
}

DotFaceView::~DotFaceView() {
    reactionEnd_.disconnect();
    if (ticker_) ticker_->remove(*this);
}

void DotFaceView::setMood(Mood mood) {
    mood_ = mood;
    queue_draw();
}

void DotFaceView::setLookX(int columns) {
    lookX_ = columns;
    queue_draw();
}

void DotFaceView::setRevealFrom(std::optional<Date> date) {
    revealFrom_ = date;
    queue_draw();
}

void DotFaceView::setReaction(std::optional<MoodReaction> reaction) {
    reaction_ = reaction;
    awaitEndOfReaction();
    queue_draw();
}

void DotFaceView::awaitEndOfReaction() {
    reactionEnd_.disconnect();
    if (!reaction_ || !get_mapped()) return;
    const double left = reaction_->until.secondsSince(clock_());
    if (!(left > 0)) return;
    // A face that stands still is not drawn anew by itself.
    const double longest = 24 * 60 * 60;
    const auto milliseconds = static_cast<unsigned>(std::ceil(std::min(left, longest) * 1000));
    const auto draw = [this] {
        queue_draw();
        return false;
    };
    reactionEnd_ = Glib::signal_timeout().connect(sigc::track_object(draw, *this), milliseconds);
}

void DotFaceView::on_map() {
    Gtk::Widget::on_map();
    followTicker();
    awaitEndOfReaction();
}

void DotFaceView::setAlive(bool alive) {
    alive_ = alive;
    followTicker();
    queue_draw();
}

void DotFaceView::followTicker() {
    if (ticker_) ticker_->remove(*this);
    ticker_.reset();
    if (!alive_ || !get_mapped()) return;
    ticker_ = WindowTicker::of(gtk_widget_get_root(Gtk::Widget::gobj()));
    ticker_->add(*this);
}

void DotFaceView::on_unmap() {
    reactionEnd_.disconnect();
    if (ticker_) ticker_->remove(*this);
    ticker_.reset();
    Gtk::Widget::on_unmap();
}

void DotFaceView::measure_vfunc(Gtk::Orientation orientation, int, int& minimum, int& natural,
                                int& minimumBaseline, int& naturalBaseline) const {
    const bool across = orientation == Gtk::Orientation::HORIZONTAL;
    const int count = across ? DotFaceModel::columns : DotFaceModel::rows;
    minimum = natural = static_cast<int>(std::ceil(extent(count, dot_, gap_)));
    minimumBaseline = naturalBaseline = -1;
}

DotFaceModel::Cells DotFaceView::cells() const {
    const Date now = clock_();
    const Mood mood = effectiveMood(mood_, reaction_, now);
    if (!alive_ || !animationsEnabled()) return DotFaceModel::cells(mood, stillTicks, lookX_);
    return DotFaceModel::cells(mood, ticks(now), lookX_, revealRadius(revealFrom_, now));
}

void DotFaceView::snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) {
    const graphene_rect_t bounds{{0, 0},
                                 {static_cast<float>(extent(DotFaceModel::columns, dot_, gap_)),
                                  static_cast<float>(extent(DotFaceModel::rows, dot_, gap_))}};
    const auto context = snapshot->append_cairo(&bounds);
    const auto all = cells();
    const Color accent = accentOf(*this);
    std::size_t next = 0;
    for (int row = 0; row < DotFaceModel::rows; ++row) {
        for (int column = 0; column < DotFaceModel::columns; ++column) {
            const DotCell& cell = all[next++];
            setSource(context, {cell.accent ? accent : Desk::white, cell.opacity});
            const double pitch = dot_ + gap_;
            fillDot(context, {pitch * column + dot_ / 2, pitch * row + dot_ / 2}, dot_);
        }
    }
}

}  // namespace orvu
