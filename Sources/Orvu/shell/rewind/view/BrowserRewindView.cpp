#include "shell/rewind/view/BrowserRewindView.h"

#include "foundation/text/Translation.h"
#include "look/view/Accessible.h"
#include "look/view/CssClass.h"

#include <gtkmm/eventcontrollerscroll.h>

#include <string>
#include <utility>

namespace orvu {
namespace {

constexpr int spacing = 12;

}  // namespace

BrowserRewindView::BrowserRewindView(std::shared_ptr<BrowserStore> store,
                                     std::function<void()> dismiss)
    : Gtk::Box(Gtk::Orientation::VERTICAL, spacing),
      store_(std::move(store)),
      dismiss_(std::move(dismiss)),
      rewind_(*store_, dismiss_),
      dots_(rewind_, scroll_.get_hadjustment()),
      refresh_(*this, [this] { storeChanged(); }) {
    add_css_class("rewind");
    set_size_request(width, -1);
    setAccessibleLabel(*this, phrase("Rewind today"));
    addHeader();
    addDots();
    list_.property_accessible_role() = Gtk::Accessible::Role::LIST;
    setAccessibleLabel(list_, phrase("Latest visits"));
    append(list_);
    rewind_.connectHovered(sigc::mem_fun(*this, &BrowserRewindView::showHovered));
    store_->connectChanged(sigc::mem_fun(refresh_, &FrameRefresh::mark));
    fill();
}

void BrowserRewindView::addHeader() {
    heading_.set_text(std::string{BrowserRewind::heading});
    heading_.add_css_class("rewind-heading");
    heading_.set_hexpand(true);
    heading_.set_xalign(0);
    time_.add_css_class("rewind-time");
    header_.append(heading_);
    header_.append(time_);
    append(header_);
}

void BrowserRewindView::addDots() {
    scroll_.set_policy(Gtk::PolicyType::EXTERNAL, Gtk::PolicyType::NEVER);
    scroll_.add_css_class("rewind-scroll");
    scroll_.set_child(dots_);
    append(scroll_);
    // New dots make the row longer only when it is laid out.
    scroll_.get_hadjustment()->signal_changed().connect(
        sigc::mem_fun(*this, &BrowserRewindView::scrollToNewest));
    const auto wheel = Gtk::EventControllerScroll::create();
    wheel->set_flags(Gtk::EventControllerScroll::Flags::BOTH_AXES);
    wheel->signal_scroll().connect(
        [this](double dx, double dy) {
            showsNewest_ = false;
            const auto position = scroll_.get_hadjustment();
            const double wheelStep = 3 * BrowserRewind::dotStart(1);
            position->set_value(position->get_value() + (dx + dy) * wheelStep);
            return true;
        },
        false);
    scroll_.add_controller(wheel);
}

void BrowserRewindView::focusNewest() {
    if (!rows_.empty()) rows_.front()->grab_focus();
}

void BrowserRewindView::storeChanged() {
    const auto previous = rewind_.visits().size();
    rewind_.refresh();
    if (rewind_.visits().empty()) return std::function{dismiss_}();
    showsNewest_ = showsNewest_ || rewind_.visits().size() != previous;
    dots_.refresh();
    fill();
}

void BrowserRewindView::fill() {
    const auto latest = rewind_.rows();
    if (latest == shown_) return showHovered();
    while (Gtk::Widget* const row = list_.get_first_child()) list_.remove(*row);
    rows_.clear();
    shown_ = latest;
    for (const Visit& visit : shown_) {
        rows_.push_back(std::make_unique<RewindRow>(
            *store_, visit, rewind_.time(visit),
            RewindRow::Actions{[this, visit] { rewind_.enter(visit); },
                               [this, visit] { rewind_.leave(visit); },
                               [this, visit] { rewind_.choose(visit); }}));
        list_.append(*rows_.back());
    }
    showHovered();
}

void BrowserRewindView::showHovered() {
    time_.set_text(rewind_.shownTime());
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        const bool isHovered = rewind_.hovered() == shown_[i];
        setCssClass(*rows_[i], "hovered", isHovered);
        setAccessibleSelected(*rows_[i], isHovered);
    }
}

void BrowserRewindView::scrollToNewest() {
    if (!showsNewest_) return;
    const auto position = scroll_.get_hadjustment();
    if (position->get_page_size() <= 0) return;
    position->set_value(position->get_upper() - position->get_page_size());
}

}  // namespace orvu
