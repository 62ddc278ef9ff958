#include "shell/rewind/BrowserRewind.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <ranges>
#include <utility>

namespace orvu {

BrowserRewind::BrowserRewind(BrowserStore& store, std::function<void()> dismiss, Locale locale,
                             Calendar calendar)
    : store_(store),
      dismiss_(std::move(dismiss)),
      locale_(std::move(locale)),
      calendar_(std::move(calendar)) {
    refresh();
}

double BrowserRewind::dotsWidth(std::size_t count) {
    return count == 0 ? 0 : dotStart(count) - dotSpacing;
}

double BrowserRewind::dotStart(std::size_t index) {
    return static_cast<double>(index) * (dotFrame + dotSpacing);
}

std::optional<std::size_t> BrowserRewind::dotAt(double x, std::size_t count) {
    if (!(x >= 0) || x >= dotsWidth(count)) return std::nullopt;
    const auto index = static_cast<std::size_t>(x / (dotFrame + dotSpacing));
    return x - dotStart(index) < dotFrame ? std::optional{index} : std::nullopt;
}

void BrowserRewind::refresh() {
    visits_ = store_.todayVisits();
    if (hovered_ && std::ranges::find(visits_, *hovered_) == visits_.end()) setHovered({});
}

std::vector<Visit> BrowserRewind::rows() const {
    const auto count = std::min(rowsLimit, visits_.size());
    return {visits_.rbegin(), std::next(visits_.rbegin(), static_cast<std::ptrdiff_t>(count))};
}

void BrowserRewind::enter(const Visit& visit) { setHovered(visit); }

void BrowserRewind::leave(const Visit& visit) {
    if (hovered_ == visit) setHovered({});
}

std::string BrowserRewind::time(const Visit& visit) const {
    return locale_.shortTime(visit.date, calendar_);
}

std::string BrowserRewind::shownTime() const {
    if (hovered_) return time(*hovered_);
    return visits_.empty() ? "" : time(visits_.back());
}

void BrowserRewind::choose(const Visit& visit) {
    const auto dismiss = dismiss_;
    store_.rewind(Visit{visit});  // the argument may be this one's own
    dismiss();
}

void BrowserRewind::setHovered(std::optional<Visit> visit) {
    if (hovered_ == visit) return;
    hovered_ = std::move(visit);
    hoverChanged_.emit();
}

}  // namespace orvu
