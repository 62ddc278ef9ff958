#include "core/BrowserStore.h"
#include "profiles/Preferences.h"

#include <algorithm>
#include <ranges>
#include <string>
#include <unordered_set>

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

/// Drops the oldest entries of a list beyond `limit`.
void keepLast(std::vector<Visit>& visits, std::size_t limit) {
    if (visits.size() <= limit) return;
    visits.erase(visits.begin(),
                 visits.begin() + static_cast<std::ptrdiff_t>(visits.size() - limit));
}

}  // namespace

template <class Record>
std::optional<std::vector<Record>> BrowserStore::load(std::string_view key) const {
    const auto stored = defaults_.data(scopedKey(key, profile_));
    return stored ? decodeRecords<Record>(*stored) : std::nullopt;
}

template <class Record>
void BrowserStore::save(const std::vector<Record>& records, std::string_view key) {
    if (isPrivate_) return;
    if (const auto text = encodeRecords(records)) {
        defaults_.setData(scopedKey(key, profile_), *text);
    }
}
template void BrowserStore::save(const std::vector<Parked>& records, std::string_view key);

void BrowserStore::restore() {
    shelf_ = load<Parked>("browserShelf").value_or(std::vector<Parked>{});
    visits_ = load<Visit>("browserVisits").value_or(std::vector<Visit>{});
    const Date cutoff =
        calendar_.addingDays(-visitsDays, loop_.now()).value_or(Date::distantPast());
    std::erase_if(visits_, [&](const Visit& visit) { return visit.date < cutoff; });
    encodedVisits_.assign(visits_);
    if (Prefs::boolean(defaults_, "restoreTabs", true)) restoreTabs();
}

void BrowserStore::restoreTabs() {
    groups_ = load<TabGroup>("browserGroups").value_or(std::vector<TabGroup>{});
    const auto saved = load<SavedTab>("browserSession").value_or(std::vector<SavedTab>{});
    // Half a session must never be what a sudden end leaves behind: it is saved when it is whole.
    restoring_ = true;
    for (const auto& record : saved) {
        BrowserTab& tab = newTab(record.url, Select::no);
        tab.setPinned(record.pinned);
        if (record.group && group(*record.group)) tab.setGroupID(record.group);
    }
    restoring_ = false;
    pruneGroups();
    if (!tabs_.empty()) saveSession();
}

void BrowserStore::saveSession() {
    if (isPrivate_ || restoring_) return;
    std::vector<SavedTab> session;
    for (const auto& tab : tabs_) {
        if (tab->url()) session.push_back({*tab->url(), tab->isPinned(), tab->groupID()});
    }
    save(session, "browserSession");
    save(groups_, "browserGroups");
}

void BrowserStore::recordVisit(const BrowserTab& tab) {
    if (isPrivate_ || !holds(tab) || !tab.url()) return;
    if (!visits_.empty() && visits_.back().url == *tab.url()) return;
    const Operation operation{*this};
    visits_.push_back({Uuid::random(), *tab.url(), tab.title(), loop_.now()});
    encodedVisits_.append(visits_.back());
    keepLast(visits_, visitsLimit);
    encodedVisits_.keepLast(visitsLimit);
    changes_.note();
    saveVisits();
    saveSession();
}

std::vector<Visit> BrowserStore::todayVisits() const {
    const Date start = calendar_.startOfDay(loop_.now());
    std::vector<Visit> result;
    std::ranges::copy_if(visits_, std::back_inserter(result),
                         [&](const Visit& visit) { return visit.date >= start; });
    return result;
}

std::vector<Visit> BrowserStore::latestOfToday(std::size_t count) const {
    const Date start = calendar_.startOfDay(loop_.now());
    std::vector<Visit> result;
    for (const auto& visit : visits_ | std::views::reverse) {
        if (result.size() == count) break;
        if (visit.date >= start) result.push_back(visit);
    }
    return result;
}

void BrowserStore::clearHistory(const std::optional<Date>& since) {
    const Operation operation{*this};
    const auto removed =
        std::erase_if(visits_, [&](const Visit& visit) { return !since || visit.date >= *since; });
    if (removed > 0 || !closedTabs_.empty()) changes_.note();
    closedTabs_.clear();
    encodedVisits_.assign(visits_);
    saveVisits();
}

void BrowserStore::removeVisit(const Visit& visit) {
    const Operation operation{*this};
    const Uuid id = visit.id;  // the argument may stand in the history
    if (std::erase_if(visits_, [&](const Visit& each) { return each.id == id; }) == 0) return;
    encodedVisits_.assign(visits_);
    changes_.note();
    saveVisits();
}

void BrowserStore::saveVisits() {
    if (!isPrivate_) defaults_.setData(scopedKey("browserVisits", profile_), encodedVisits_.text());
}

void BrowserStore::reloadVisits() {
    auto stored = load<Visit>("browserVisits");
    if (!stored || *stored == visits_) return;
    const Operation operation{*this};
    visits_ = std::move(*stored);
    encodedVisits_.assign(visits_);
    changes_.note();
}

int BrowserStore::importVisits(const std::vector<Visit>& visits, const Profile& profile,
                               UserDefaults& defaults, NotificationCenter& notifications) {
    const std::string key = scopedKey("browserVisits", profile);
    const auto stored = defaults.data(key);
    std::vector<Visit> all =
        (stored ? decodeRecords<Visit>(*stored) : std::nullopt).value_or(std::vector<Visit>{});

    all.reserve(all.size() + visits.size());  // nothing moves while `known` refers to it
    std::unordered_set<Identity, HashIdentity> known;
    known.reserve(all.capacity());
    for (const auto& visit : all) known.emplace(visit);
    int taken = 0;
    for (const auto& visit : visits) {
        if (!known.emplace(visit).second) continue;
        all.push_back(visit);
        ++taken;
    }
    if (taken == 0) return 0;

    std::ranges::stable_sort(all, {}, &Visit::date);
    keepLast(all, visitsLimit);
    if (const auto text = encodeRecords(all)) defaults.setData(key, *text);
    notifications.post(historyImported);
    return taken;
}

}  // namespace orvu
