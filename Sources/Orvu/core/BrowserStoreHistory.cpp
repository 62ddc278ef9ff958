#include "core/BrowserStore.h"

#include "platform/SourceAddress.h"
#include "platform/StoredRecords.h"

#include <algorithm>
#include <string>
#include <utility>

namespace orvu {
namespace {

/// In which turn restored tabs load: the pinned ones first, then as they stand in the column.
std::vector<std::size_t> turnsOf(const std::vector<SavedTab>& saved,
                                 const std::vector<TabGroup>& groups) {
    std::vector<std::size_t> turns;
    turns.reserve(saved.size());
    for (const SavedTab& tab : saved) {
        const auto group = std::ranges::find(groups, tab.group, &TabGroup::id);
        const auto place = static_cast<std::size_t>(group - groups.begin());
        turns.push_back(tab.pinned ? 0 : 1 + place);
    }
    return turns;
}

}  // namespace

template <class Record>
std::optional<std::vector<Record>> BrowserStore::load(const SettingKey& key) const {
    return readRecords<Record>(defaults_, scopedKey(key.name, profile_));
}

template <class Record>
void BrowserStore::save(const std::vector<Record>& records, const SettingKey& key) {
    if (isSaved()) writeRecords(defaults_, scopedKey(key.name, profile_), records);
}
template void BrowserStore::save(const std::vector<Parked>& records, const SettingKey& key);
template std::optional<std::vector<Parked>> BrowserStore::load(const SettingKey& key) const;

void BrowserStore::restore() {
    shelf_ = load<Parked>(SettingsKeys::browserShelf).value_or(std::vector<Parked>{});
    auto visits = load<Visit>(SettingsKeys::browserVisits).value_or(std::vector<Visit>{});
    const Date cutoff =
        calendar_.addingDays(-visitsDays, loop_.now()).value_or(Date::distantPast());
    std::erase_if(visits, [&](const Visit& visit) { return visit.date < cutoff; });
    history_.assign(std::move(visits));
    if (services_.settings().restoreTabs.get()) restoreTabs();
}

void BrowserStore::restoreTabs() {
    groups_ = load<TabGroup>(SettingsKeys::browserGroups).value_or(std::vector<TabGroup>{});
    const auto saved =
        load<SavedTab>(SettingsKeys::browserSession).value_or(std::vector<SavedTab>{});
    // Half a session must never be what a sudden end leaves behind: it is saved when it is whole.
    restoring_ = true;
    const auto turns = turnsOf(saved, groups_);
    for (std::size_t i = 0; i < saved.size(); ++i) {
        const SavedTab& record = saved[i];
        BrowserTab& tab = addTab({record.url, std::nullopt, turns[i]}, Select::no);
        tab.setPinned(record.pinned);
        if (record.group && group(*record.group)) tab.setGroupID(record.group);
    }
    restoring_ = false;
    pruneGroups();
    if (!tabs_.empty()) saveSession();
}

void BrowserStore::saveSession() {
    if (!isSaved() || restoring_) return;
    std::vector<SavedTab> session;
    for (const auto& tab : tabs_) {
        if (tab->url() && canBeStored(*tab->url()))
            session.push_back({*tab->url(), tab->isPinned(), tab->groupID()});
    }
    save(session, SettingsKeys::browserSession);
    save(groups_, SettingsKeys::browserGroups);
}

void BrowserStore::recordVisit(const BrowserTab& tab) {
    if (isPrivate_ || !holds(tab) || !tab.url()) return;
    if (tab.url()->absoluteString().size() > VisitHistory::addressLimit) return;
    if (pageOfSource(*tab.url())) return saveSession();  // the page was visited before
    const Operation operation{*this};
    if (!history_.add({Uuid::random(), *tab.url(), tab.title(), loop_.now()})) return;
    changes_.note();
    saveVisits();
    saveSession();
}

std::vector<Visit> BrowserStore::todayVisits() const {
    return history_.since(calendar_.startOfDay(loop_.now()));
}

std::vector<Visit> BrowserStore::latestOfToday(std::size_t count) const {
    return history_.latestSince(calendar_.startOfDay(loop_.now()), count);
}

void BrowserStore::clearHistory(const std::optional<Date>& since) {
    const Operation operation{*this};
    if (history_.removeSince(since) || !closedTabs_.empty()) changes_.note();
    closedTabs_.clear();
    saveVisits();
}

void BrowserStore::removeVisit(const Visit& visit) {
    const Operation operation{*this};
    if (!history_.remove(visit.id)) return;
    changes_.note();
    saveVisits();
}

void BrowserStore::saveVisits() {
    if (!isSaved()) return;
    defaults_.setData(scopedKey(SettingsKeys::browserVisits.name, profile_), history_.encoded());
}

void BrowserStore::reloadVisits() {
    auto stored = load<Visit>(SettingsKeys::browserVisits);
    if (!stored) return;
    const Operation operation{*this};
    if (history_.assign(std::move(*stored))) changes_.note();
}

int BrowserStore::importVisits(const std::vector<Visit>& visits, const Profile& profile,
                               UserDefaults& defaults, NotificationCenter& notifications) {
    const std::string key = scopedKey(SettingsKeys::browserVisits.name, profile);
    int newOnes = 0;
    const auto all = VisitHistory::merged(
        readRecords<Visit>(defaults, key).value_or(std::vector<Visit>{}), visits, newOnes);
    if (!all) return 0;
    writeRecords(defaults, key, *all);
    notifications.post(historyImported);
    return newOnes;
}

}  // namespace orvu
