#include "shell/pagearea/view/BrowserSplitPagesView.h"

#include <algorithm>
#include <cmath>

namespace orvu {

BrowserSplitPagesView::BrowserSplitPagesView(BrowserView& view)
    : view_(view), first_(view, PagePane::Place::first), second_(view, PagePane::Place::second) {
    add_css_class("split-pages");
    first_.set_parent(*this);
    divider_.set_parent(*this);
    second_.set_parent(*this);
    addDrag();
    divider_.connectStepped([this](int steps) {
        split_.step(steps);
        queue_allocate();
    });
    view_.fullscreenTab.connectChanged(
        sigc::mem_fun(*this, &BrowserSplitPagesView::fullscreenChanged));
}

void BrowserSplitPagesView::addDrag() {
    drag_->signal_drag_begin().connect(sigc::mem_fun(*this, &BrowserSplitPagesView::dragBegan));
    drag_->signal_drag_update().connect(sigc::mem_fun(*this, &BrowserSplitPagesView::dragged));
    add_controller(drag_);
}

void BrowserSplitPagesView::dragBegan(double x, double y) {
    dividerFollows_ = false;
    const Gtk::Allocation divider = divider_.get_allocation();
    const bool hit = x >= divider.get_x() && x < divider.get_x() + divider.get_width();
    if (!hit || y < 0) drag_->set_state(Gtk::EventSequenceState::DENIED);
}

void BrowserSplitPagesView::dragged(double x, double y) {
    dividerFollows_ = dividerFollows_ || std::hypot(x, y) >= BrowserSplitPages::dragThreshold;
    double startX = 0;
    double startY = 0;
    if (!dividerFollows_ || !drag_->get_start_point(startX, startY)) return;
    split_.dragTo(startX + x, get_width());
    queue_allocate();
}

BrowserSplitPagesView::~BrowserSplitPagesView() {
    first_.unparent();
    divider_.unparent();
    second_.unparent();
}

bool BrowserSplitPagesView::show(const BrowserStore::TabList& pair) {
    // Both give their pages back first: the two may have changed places.
    if (first_.shown() != pair[0]) first_.show(nullptr);
    if (second_.shown() != pair[1]) second_.show(nullptr);
    const bool otherFirst = first_.show(pair[0]);
    const bool otherSecond = second_.show(pair[1]);
    return otherFirst || otherSecond;
}

std::vector<Gtk::Widget*> BrowserSplitPagesView::areas() {
    auto present = activePane().content().areas();
    present.insert(present.begin(), &divider_);
    return present;
}

void BrowserSplitPagesView::focusContent() { activePane().content().focusContent(); }

PagePane& BrowserSplitPagesView::activePane() {
    const auto active = view_.store().active();
    return active && active == second_.shown() ? second_ : first_;
}

/// While a page fills the window its pane stands alone, without header and divider.
void BrowserSplitPagesView::fullscreenChanged() {
    const auto& tab = view_.fullscreenTab.get();
    divider_.set_visible(!tab);
    for (PagePane* const pane : {&first_, &second_}) {
        const auto shown = pane->shown();
        const bool fills = tab && shown && shown->id() == *tab;
        pane->setFullscreen(fills);
        pane->set_visible(!tab || fills);
    }
}

Gtk::SizeRequestMode BrowserSplitPagesView::get_request_mode_vfunc() const {
    return Gtk::SizeRequestMode::CONSTANT_SIZE;
}

void BrowserSplitPagesView::measure_vfunc(Gtk::Orientation orientation, int, int& minimum,
                                          int& natural, int& minimumBaseline,
                                          int& naturalBaseline) const {
    minimum = natural = 0;
    minimumBaseline = naturalBaseline = -1;
    for (const Gtk::Widget* const pane :
         {static_cast<const Gtk::Widget*>(&first_), static_cast<const Gtk::Widget*>(&second_)}) {
        int paneMinimum = 0;
        int paneNatural = 0;
        int ignored = 0;
        pane->measure(orientation, -1, paneMinimum, paneNatural, ignored, ignored);
        const bool across = orientation == Gtk::Orientation::HORIZONTAL;
        minimum = across ? minimum + paneMinimum : std::max(minimum, paneMinimum);
        natural = across ? natural + paneNatural : std::max(natural, paneNatural);
    }
}

void BrowserSplitPagesView::size_allocate_vfunc(int width, int height, int) {
    if (!first_.get_visible() || !second_.get_visible()) {
        (first_.get_visible() ? first_ : second_).size_allocate({0, 0, width, height}, -1);
        return;
    }
    const auto [first, second] = split_.widths(width);
    first_.size_allocate({0, 0, first, height}, -1);
    divider_.size_allocate({first, 0, BrowserSplitPages::dividerWidth, height}, -1);
    second_.size_allocate({first + BrowserSplitPages::dividerWidth, 0, second, height}, -1);
}

}  // namespace orvu
