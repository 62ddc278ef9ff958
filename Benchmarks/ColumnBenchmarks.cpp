#include "shell/column/ListEdits.h"
#include "support/FakeDesktop.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <iterator>
#include <vector>

namespace orvu {
namespace {

/// What the column decides before it touches a widget when one tab of `state.range(0)` closes,
/// the tabs being in ten groups and in none.
void columnUpdate(benchmark::State& state) {
    FakeDesktop desktop;
    AppServices services{desktop.platform()};
    BrowserStore store{services, true, Profile::personal()};
    while (std::ssize(store.tabs()) < state.range(0)) {
        auto& tab = store.newTab(std::nullopt, BrowserStore::Select::no);
        const auto count = store.tabs().size();
        if (count % 2 == 0 && store.groups().size() < 10) {
            store.newGroup(tab);
        } else if (count % 2 == 0) {
            store.moveToGroup(tab, store.groups()[count / 2 % 10]);
        }
    }
    const auto keys = [&] {
        const auto items = columnItems(store);
        std::vector<ColumnKey> result(items.size());
        std::ranges::transform(items, result.begin(), &ColumnItem::key);
        return result;
    };
    const auto before = keys();
    store.close(*store.tabs()[store.tabs().size() / 2]);

    for (auto _ : state) {
        const auto edits = listEdits(before, keys());
        if (edits.size() != 1) state.SkipWithError("one closed tab is not one step");
        benchmark::DoNotOptimize(edits);
    }
}

BENCHMARK(columnUpdate)->Name("ColumnUpdate")->Arg(10)->Arg(500)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace orvu
