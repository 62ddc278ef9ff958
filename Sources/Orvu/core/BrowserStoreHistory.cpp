#include "core/BrowserStore.h"
#include "profiles/Preferences.h"

#include <algorithm>
#include <string>
#include <unordered_set>

namespace orvu {
namespace {

/// What makes two visits the same in an import: the address, and the second.
std::string identity(const Visit& visit) {
    return visit.url.absoluteString() + "|" + std::to_string(visit.date.wholeUnixSeconds());
}

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
        const bool known = record.group && std::ranges::find(groups_, *record.group,
                                                             &TabGroup::id) != groups_.end();
        if (known) tab.setGroupID(record.group);
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
    const ChangeSignal::Scope change{changes_};
    visits_.push_back({Uuid::random(), *tab.url(), tab.title(), loop_.now()});
    keepLast(visits_, visitsLimit);
    changes_.note();
    save(visits_, "browserVisits");
    saveSession();
}

std::vector<Visit> BrowserStore::todayVisits() const {
    const Date start = calendar_.startOfDay(loop_.now());
    std::vector<Visit> result;
    std::ranges::copy_if(visits_, std::back_inserter(result),
                         [&](const Visit& visit) { return visit.date >= start; });
    return result;
}

void BrowserStore::clearHistory(const std::optional<Date>& since) {
    const ChangeSignal::Scope change{changes_};
    const auto removed =
        std::erase_if(visits_, [&](const Visit& visit) { return !since || visit.date >= *since; });
    if (removed > 0 || !closedTabs_.empty()) changes_.note();
    closedTabs_.clear();
    save(visits_, "browserVisits");
}

void BrowserStore::removeVisit(const Visit& visit) {
    const ChangeSignal::Scope change{changes_};
    const Uuid id = visit.id;  // the argument may stand in the history
    if (std::erase_if(visits_, [&](const Visit& each) { return each.id == id; }) == 0) return;
    changes_.note();
    save(visits_, "browserVisits");
}

void BrowserStore::reloadVisits() {
    auto stored = load<Visit>("browserVisits");
    if (!stored || *stored == visits_) return;
    const ChangeSignal::Scope change{changes_};
    visits_ = std::move(*stored);
    changes_.note();
}

int BrowserStore::importVisits(const std::vector<Visit>& visits, const Profile& profile,
                               UserDefaults& defaults, NotificationCenter& notifications) {
    const std::string key = scopedKey("browserVisits", profile);
    const auto stored = defaults.data(key);
    std::vector<Visit> all =
        (stored ? decodeRecords<Visit>(*stored) : std::nullopt).value_or(std::vector<Visit>{});

    std::unordered_set<std::string> known;
    for (const auto& visit : all) known.insert(identity(visit));
    int taken = 0;
    for (const auto& visit : visits) {
        if (!known.insert(identity(visit)).second) continue;
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
