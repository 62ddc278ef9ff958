#include "platform/LoadQueue.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>
#include <vector>

namespace orvu {

LoadQueue::LoadQueue(MainLoop& loop, Activity& activity)
    : loop_(loop),
      activity_(activity),
      activityWatch_(activity.connectChanged([this] { update(); })) {}

std::unique_ptr<LoadQueue::Place> LoadQueue::wait(std::size_t turn, std::function<void()> start) {
    return add({Stage::waiting, turn, std::move(start)});
}

std::unique_ptr<LoadQueue::Place> LoadQueue::goFirst() { return add({Stage::front}); }

std::unique_ptr<LoadQueue::Place> LoadQueue::add(Entry entry) {
    entry.since = loop_.now();
    auto place = std::make_unique<Place>(*this, entries_.insert(entries_.end(), std::move(entry)));
    update();
    return place;
}

void LoadQueue::leave(Entries::iterator entry) {
    entries_.erase(entry);
    update();
}

bool LoadQueue::hasWaiting() const {
    return std::ranges::find(entries_, Stage::waiting, &Entry::stage) != entries_.end();
}

std::optional<Date> LoadQueue::nextStart() const {
    if (activity_.isMoving()) return std::nullopt;
    const Date now = loop_.now();
    // A clock that was set back holds nothing up.
    const auto end = [now](Date begin, std::chrono::duration<double> time) {
        return begin > now ? now : begin.after(time);
    };
    Date start = end(activity_.lastPress(), quietTime);
    std::vector<Date> ends;  // of those that run
    for (const Entry& entry : entries_) {
        if (entry.stage == Stage::front) start = std::max(start, end(entry.since, frontTime));
        if (entry.stage == Stage::running) ends.push_back(end(entry.since, longestTurn));
    }
    std::ranges::sort(ends);
    if (ends.size() >= together) start = std::max(start, ends[ends.size() - together]);
    return start;
}

void LoadQueue::update() {
    next_.cancel();
    const auto start = hasWaiting() ? nextStart() : std::nullopt;
    if (!start) return;
    const double delay = start->secondsSince(loop_.now());
    if (delay > 0) {
        const std::chrono::milliseconds time{static_cast<std::int64_t>(std::ceil(delay * 1000))};
        next_ = loop_.after(time, [this] { update(); });
    } else {
        next_ = loop_.whenIdle([this] { startNext(); });
    }
}

void LoadQueue::startNext() {
    const auto start = nextStart();
    if (!start || *start > loop_.now()) return update();  // something came up meanwhile
    Entry* next = nullptr;
    for (Entry& entry : entries_) {
        if (entry.stage != Stage::waiting) continue;
        if (!next || entry.turn < next->turn) next = &entry;
    }
    if (!next) return;
    next->stage = Stage::running;
    next->since = loop_.now();
    const auto begin = std::exchange(next->start, {});  // which may end its place
    update();
    begin();
}

}  // namespace orvu
