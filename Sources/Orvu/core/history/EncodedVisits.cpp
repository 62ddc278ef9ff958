#include "core/history/EncodedVisits.h"

#include <utility>

namespace orvu {

void EncodedVisits::assign(const std::vector<Visit>& visits) {
    text_ = "[]";
    lengths_.clear();
    for (const auto& visit : visits) append(visit);
}

void EncodedVisits::append(const Visit& visit) {
    JsonWriter writer;
    visit.encode(writer);
    const auto entry = std::move(writer).finish();
    if (!entry) {
        lengths_.push_back(0);
        return;
    }
    text_.pop_back();  // the closing bracket
    if (text_.size() > 1) text_.push_back(',');
    text_.append(*entry).append(1, ']');
    lengths_.push_back(entry->size() + 1);
}

void EncodedVisits::keepLast(std::size_t limit) {
    std::size_t dropped = 0;
    while (lengths_.size() > limit) {
        dropped += lengths_.front();
        lengths_.pop_front();
    }
    text_.erase(1, dropped);
    // With the last entry the closing bracket went, which stood where its comma would be.
    if (text_.size() == 1) text_.push_back(']');
}

}  // namespace orvu
