#include "shell/rewind/view/RewindDots.h"

#include "foundation/text/Translation.h"
#include "site/icons/SiteColor.h"
#include "look/text/OneLine.h"
#include "look/view/Accessible.h"
#include "look/view/Keyboard.h"
#include "look/drawing/view/Drawing.h"

#include <gdk/gdkkeysyms.h>
#include <gtkmm/eventcontrollerkey.h>
#include <gtkmm/eventcontrollermotion.h>
#include <gtkmm/gestureclick.h>
#include <gtkmm/snapshot.h>
#include <gtkmm/tooltip.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace orvu {
namespace {

constexpr std::size_t titleLimit = 300;
constexpr double frame = BrowserRewind::dotFrame;

std::string hostOf(const Visit& visit) { return visit.url.host().value_or(""); }

}  // namespace

RewindDots::RewindDots(BrowserRewind& rewind, Glib::RefPtr<Gtk::Adjustment> scroll)
    : rewind_(rewind),
      scroll_(std::move(scroll)),
      growing_(*this, Motion::bouncy, 0, [this](double) { queue_draw(); }),
      shrinking_(*this, Motion::bouncy, 0, [this](double) { queue_draw(); }) {
    add_css_class("rewind-dots");
    property_accessible_role() = Gtk::Accessible::Role::SLIDER;
    setAccessibleLabel(*this, phrase("Visits of today"));
    set_focusable(true);
    set_has_tooltip(true);
    signal_query_tooltip().connect(
        [this](int x, int, bool byKeyboard, const Glib::RefPtr<Gtk::Tooltip>& tooltip) {
            return queryTooltip(x, byKeyboard, tooltip);
        },
        false);
    addPointer();
    const auto keys = Gtk::EventControllerKey::create();
    keys->signal_key_pressed().connect(
        [this](guint key, guint, Gdk::ModifierType) { return keyPressed(key); }, false);
    add_controller(keys);
    rewind_.connectHovered(sigc::mem_fun(*this, &RewindDots::hoverChanged));
    scroll_->signal_value_changed().connect(sigc::mem_fun(*this, &RewindDots::queue_draw));
    tellAccessibility();
}

void RewindDots::addPointer() {
    const auto motion = Gtk::EventControllerMotion::create();
    motion->signal_enter().connect([this](double x, double) { hover(x); });
    motion->signal_motion().connect([this](double x, double) { hover(x); });
    motion->signal_leave().connect([this] { hover(-1); });
    add_controller(motion);
    const auto press = Gtk::GestureClick::create();
    press->signal_released().connect([this](int, double x, double) { click(x); });
    add_controller(press);
}

void RewindDots::refresh() {
    grown_ = hoveredIndex();
    shrunk_.reset();
    tellAccessibility();
    queue_resize();
}

void RewindDots::hover(double x) {
    const auto& visits = rewind_.visits();
    if (const auto index = BrowserRewind::dotAt(x, visits.size())) {
        rewind_.enter(visits[*index]);
    } else if (const auto previous = rewind_.hovered()) {
        rewind_.leave(*previous);
    }
}

void RewindDots::click(double x) {
    const auto& visits = rewind_.visits();
    if (const auto index = BrowserRewind::dotAt(x, visits.size())) rewind_.choose(visits[*index]);
}

bool RewindDots::keyPressed(guint key) {
    if (isReturnKey(key) || key == GDK_KEY_space) {
        if (const auto visit = rewind_.hovered()) rewind_.choose(*visit);
        return true;
    }
    constexpr std::ptrdiff_t all = std::ptrdiff_t{1} << 40;  // more than there can be
    switch (key) {
        case GDK_KEY_Left:
            step(-1);
            return true;
        case GDK_KEY_Right:
            step(+1);
            return true;
        case GDK_KEY_Home:
            step(-all);
            return true;
        case GDK_KEY_End:
            step(+all);
            return true;
        default:
            return false;
    }
}

void RewindDots::step(std::ptrdiff_t steps) {
    const auto& visits = rewind_.visits();
    if (visits.empty()) return;
    const auto last = static_cast<std::ptrdiff_t>(visits.size()) - 1;
    const auto at = hoveredIndex();
    // The first step back is from the newest visit, where the time stands.
    const auto from = at ? static_cast<std::ptrdiff_t>(*at) : last;
    const auto to = static_cast<std::size_t>(std::clamp(from + steps, std::ptrdiff_t{0}, last));
    rewind_.enter(visits[to]);
    const double start = BrowserRewind::dotStart(to);
    scroll_->clamp_page(start, start + frame);
}

std::optional<std::size_t> RewindDots::hoveredIndex() const {
    if (!rewind_.hovered()) return std::nullopt;
    const auto& visits = rewind_.visits();
    const auto found = std::ranges::find(visits, *rewind_.hovered());
    if (found == visits.end()) return std::nullopt;
    return static_cast<std::size_t>(found - visits.begin());
}

void RewindDots::hoverChanged() {
    const auto index = hoveredIndex();
    if (index == grown_) return;
    const double reached = growing_.value();
    shrunk_ = std::exchange(grown_, index);
    shrinking_.jumpTo(shrunk_ ? reached : 0);
    shrinking_.animateTo(0);
    growing_.jumpTo(0);
    growing_.animateTo(grown_ ? 1 : 0);
    tellAccessibility();
    queue_draw();
}

void RewindDots::tellAccessibility() {
    const auto& visits = rewind_.visits();
    const auto index = hoveredIndex().value_or(visits.empty() ? 0 : visits.size() - 1);
    const std::string text = visits.empty() ? ""
                                            : oneLine(visits[index].title, titleLimit) + ", " +
                                                  rewind_.time(visits[index]);
    setAccessibleValue(*this, {.now = static_cast<double>(index + 1),
                               .least = 1,
                               .most = static_cast<double>(std::max<std::size_t>(visits.size(), 1)),
                               .text = text});
}

bool RewindDots::queryTooltip(int x, bool byKeyboard, const Glib::RefPtr<Gtk::Tooltip>& tooltip) {
    const auto& visits = rewind_.visits();
    const auto index = byKeyboard ? hoveredIndex() : BrowserRewind::dotAt(x, visits.size());
    if (!index) return false;
    tooltip->set_text(oneLine(visits[*index].title, titleLimit));
    tooltip->set_tip_area({static_cast<int>(BrowserRewind::dotStart(*index)), 0,
                           static_cast<int>(frame), get_height()});
    return true;
}

double RewindDots::diameter(std::size_t index) const {
    const double hovered = index == grown_    ? growing_.value()
                           : index == shrunk_ ? shrinking_.value()
                                              : 0;
    return std::lerp(BrowserRewind::dotDiameter, BrowserRewind::hoveredDotDiameter, hovered);
}

Gtk::SizeRequestMode RewindDots::get_request_mode_vfunc() const {
    return Gtk::SizeRequestMode::CONSTANT_SIZE;
}

void RewindDots::measure_vfunc(Gtk::Orientation orientation, int, int& minimum, int& natural,
                               int& minimumBaseline, int& naturalBaseline) const {
    const double size = orientation == Gtk::Orientation::HORIZONTAL
                            ? BrowserRewind::dotsWidth(rewind_.visits().size())
                            : frame;
    minimum = natural = static_cast<int>(size);
    minimumBaseline = naturalBaseline = -1;
}

void RewindDots::snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) {
    const auto& visits = rewind_.visits();
    if (visits.empty()) return;
    // Only the dots that can be seen: a day may have thousands. Half a dot at either edge, and one
    // that grows into sight, count.
    const double pitch = BrowserRewind::dotStart(1);
    const auto first = static_cast<std::size_t>(std::max(scroll_->get_value() / pitch - 1, 0.0));
    const double end = scroll_->get_value() + scroll_->get_page_size();
    const auto last = std::min(visits.size(), static_cast<std::size_t>(end / pitch + 2));
    if (first >= last) return;
    // The spring swings past its end, so a dot may be drawn beyond its frame and beyond the widget.
    const auto context = snapshot->append_cairo(Gdk::Rectangle{
        static_cast<int>(BrowserRewind::dotStart(first) - frame), static_cast<int>(-frame),
        static_cast<int>(BrowserRewind::dotStart(last - first) + 2 * frame),
        static_cast<int>(3 * frame)});
    for (std::size_t index = first; index < last; ++index) {
        setSource(context, {SiteColor::of(hostOf(visits[index]))});
        fillDot(context, {BrowserRewind::dotStart(index) + frame / 2, get_height() / 2.0},
                std::max(diameter(index), 0.0));
    }
}

}  // namespace orvu
