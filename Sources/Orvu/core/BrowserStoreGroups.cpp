#include "core/BrowserStore.h"
#include "foundation/text/Text.h"
#include "foundation/text/Translation.h"

#include <algorithm>

namespace orvu {

const TabGroup* BrowserStore::group(const Uuid& id) const {
    const auto found = std::ranges::find(groups_, id, &TabGroup::id);
    return found != groups_.end() ? &*found : nullptr;
}

const TabGroup* BrowserStore::groupOf(const BrowserTab& tab) const {
    return tab.groupID() ? group(*tab.groupID()) : nullptr;
}

std::optional<TabGroup> BrowserStore::newGroup(BrowserTab& tab) {
    const auto found = find(tab.id());
    if (found == tabs_.end()) return std::nullopt;
    const Operation operation{*this};
    const auto held = *found;  // an observer of the tab may close it
    TabGroup group{.id = Uuid::random(),
                   .name = tab.url() ? siteName(*tab.url()) : "",
                   .color = TabGroup::wrappedColor(static_cast<std::int64_t>(groups_.size()))};
    if (group.name.empty()) group.name = tr("Group {1}", std::to_string(groups_.size() + 1));
    groups_.push_back(group);
    tab.setGroupID(group.id);
    tab.setPinned(false);
    changedGroups();
    return group;
}

void BrowserStore::moveToGroup(BrowserTab& tab, const TabGroup& group) {
    if (!holds(tab) || !findGroup(group)) return;
    const Operation operation{*this};
    tab.setGroupID(group.id);
    changedGroups();
}

void BrowserStore::removeFromGroup(BrowserTab& tab) {
    if (!holds(tab)) return;
    const Operation operation{*this};
    tab.setGroupID(std::nullopt);
    changedGroups();
}

void BrowserStore::rename(const TabGroup& group, std::string_view name) {
    TabGroup* const found = findGroup(group);
    if (!found) return;
    const Operation operation{*this};
    const auto newName = trimmed(name, TrimSet::whitespaces);
    if (!newName.empty()) found->name = std::string{firstCharacters(newName, groupNameLimit)};
    changedGroups();
}

void BrowserStore::recolor(const TabGroup& group) {
    TabGroup* const found = findGroup(group);
    if (!found) return;
    const Operation operation{*this};
    found->color = TabGroup::wrappedColor(found->color + 1);
    changedGroups();
}

void BrowserStore::toggleCollapsed(const TabGroup& group) {
    TabGroup* const found = findGroup(group);
    if (!found) return;
    const Operation operation{*this};
    found->collapsed = !found->collapsed;
    changedGroups();
}

void BrowserStore::ungroup(const TabGroup& group) {
    if (!findGroup(group)) return;
    const Operation operation{*this};
    const Uuid id = group.id;   // the argument may stand in the list
    const TabList all = tabs_;  // an observer of a tab may open or close others
    for (const auto& tab : all) {
        if (tab->groupID() == id) tab->setGroupID(std::nullopt);
    }
    std::erase_if(groups_, [&](const TabGroup& each) { return each.id == id; });
    changedGroups();
}

void BrowserStore::closeGroup(const TabGroup& group) {
    if (!findGroup(group)) return;
    const Operation operation{*this};
    const Uuid id = group.id;
    for (const auto& tab : tabs(group)) close(*tab);
    std::erase_if(groups_, [&](const TabGroup& each) { return each.id == id; });
    changedGroups();
}

TabGroup* BrowserStore::findGroup(const TabGroup& group) {
    return const_cast<TabGroup*>(this->group(group.id));
}

void BrowserStore::pruneGroups() {
    std::erase_if(groups_, [&](const TabGroup& group) {
        return std::ranges::none_of(tabs_,
                                    [&](const auto& tab) { return tab->groupID() == group.id; });
    });
}

void BrowserStore::changedGroups() {
    pruneGroups();
    changes_.note();
    saveSession();
}

}  // namespace orvu
