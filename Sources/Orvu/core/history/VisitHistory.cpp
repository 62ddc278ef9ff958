#include "core/history/VisitHistory.h"

#include <algorithm>
#include <ranges>
#include <unordered_set>
#include <utility>

namespace orvu {
namespace {

/// What makes two visits the same in an import: the address, and the second.
struct Identity {
    std::string_view url;  ///< of a visit that must stay where it is
    std::int64_t second;

    explicit Identity(const Visit& visit)
        : url(visit.url.absoluteString()), second(visit.date.wholeUnixSeconds()) {}
    friend bool operator==(const Identity&, const Identity&) = default;
};

struct HashIdentity {
    std::size_t operator()(const Identity& identity) const {
        constexpr std::size_t oddFactor = 0x9E3779B97F4A7C15;
        return std::hash<std::string_view>{}(identity.url) ^
               static_cast<std::size_t>(identity.second) * oddFactor;
    }
};

void keepLast(std::vector<Visit>& visits) {
    if (visits.size() <= VisitHistory::limit) return;
    const auto surplus = static_cast<std::ptrdiff_t>(visits.size() - VisitHistory::limit);
    visits.erase(visits.begin(), visits.begin() + surplus);
}

}  // namespace

std::vector<Visit> VisitHistory::since(Date start) const {
    std::vector<Visit> result;
    std::ranges::copy_if(visits_, std::back_inserter(result),
                         [&](const Visit& visit) { return visit.date >= start; });
    return result;
}

std::vector<Visit> VisitHistory::latestSince(Date start, std::size_t count) const {
    std::vector<Visit> result;
    for (const auto& visit : visits_ | std::views::reverse) {
        if (result.size() == count) break;
        if (visit.date >= start) result.push_back(visit);
    }
    return result;
}

bool VisitHistory::assign(std::vector<Visit> visits) {
    if (visits == visits_) return false;
    visits_ = std::move(visits);
    encoded_.assign(visits_);
    return true;
}

bool VisitHistory::add(Visit visit) {
    if (!visits_.empty() && visits_.back().url == visit.url) return false;
    visits_.push_back(std::move(visit));
    encoded_.append(visits_.back());
    keepLast(visits_);
    encoded_.keepLast(limit);
    return true;
}

bool VisitHistory::remove(const Uuid& id) {
    const Uuid removed = id;  // it may be that of a visit that moves
    return removeWhere([&](const Visit& visit) { return visit.id == removed; });
}

bool VisitHistory::removeSince(const std::optional<Date>& start) {
    return removeWhere([&](const Visit& visit) { return !start || visit.date >= *start; });
}

bool VisitHistory::removeWhere(const auto& condition) {
    if (std::erase_if(visits_, condition) == 0) return false;
    encoded_.assign(visits_);
    return true;
}

std::optional<std::vector<Visit>> VisitHistory::merged(std::vector<Visit> stored,
                                                       const std::vector<Visit>& added,
                                                       int& newOnes) {
    stored.reserve(stored.size() + added.size());  // nothing moves while `known` refers to it
    std::unordered_set<Identity, HashIdentity> known;
    known.reserve(stored.capacity());
    for (const auto& visit : stored) known.emplace(visit);
    newOnes = 0;
    for (const auto& visit : added) {
        if (!known.emplace(visit).second) continue;
        stored.push_back(visit);
        ++newOnes;
    }
    if (newOnes == 0) return std::nullopt;
    std::ranges::stable_sort(stored, {}, &Visit::date);
    keepLast(stored);
    return stored;
}

}  // namespace orvu
