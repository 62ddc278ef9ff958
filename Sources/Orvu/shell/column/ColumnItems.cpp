#include "shell/column/ColumnItems.h"

#include <algorithm>

namespace orvu {
namespace {

using Kind = ColumnKey::Kind;

/// Where a tab stands when one goes from tab to tab.
struct Stop {
    std::shared_ptr<BrowserTab> tab;
    bool shown;
};

std::vector<Stop> stops(const BrowserStore& store) {
    std::vector<Stop> result;
    const auto add = [&](const BrowserStore::TabList& tabs, bool shown) {
        for (const auto& tab : tabs) result.push_back({tab, shown});
    };
    add(store.pinned(), true);
    for (const auto& group : store.groups()) add(store.tabs(group), !group.collapsed);
    add(store.ungrouped(), true);
    return result;
}

}  // namespace

std::vector<ColumnItem> columnItems(const BrowserStore& store) {
    std::vector<ColumnItem> items;
    items.reserve(store.tabs().size() + store.groups().size() + 1);
    const auto addTabs = [&](const BrowserStore::TabList& tabs) {
        for (const auto& tab : tabs) items.push_back({{Kind::tab, tab->id()}});
    };
    for (const auto& group : store.groups()) {
        const auto tabs = store.tabs(group);
        if (tabs.empty()) continue;
        items.push_back({{Kind::group, group.id}, tabs.size()});
        if (!group.collapsed) addTabs(tabs);
    }
    const auto ungrouped = store.ungrouped();
    if (!items.empty() && !ungrouped.empty()) items.push_back({{Kind::ungroupedHeading}});
    addTabs(ungrouped);
    return items;
}

std::shared_ptr<BrowserTab> neighbourTab(const BrowserStore& store, ColumnStep step) {
    auto all = stops(store);
    if (step == ColumnStep::previous) std::ranges::reverse(all);
    const auto front = std::ranges::find_if(
        all, [&](const Stop& stop) { return stop.tab->id() == store.activeID(); });
    if (front == all.end()) return all.empty() ? nullptr : all.front().tab;
    // What comes behind the tab in front, and then what comes before it.
    std::ranges::rotate(all, front);
    const auto others = std::ranges::subrange(all.begin() + 1, all.end());
    const auto shown = std::ranges::find_if(others, &Stop::shown);
    if (shown != others.end()) return shown->tab;
    return others.empty() ? nullptr : others.front().tab;
}

}  // namespace orvu
