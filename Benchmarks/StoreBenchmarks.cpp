#include "CallTimes.h"
#include "FullProfile.h"

#include "core/AddressResolution.h"
#include "core/BrowserStore.h"
#include "platform/TemporaryFolder.h"
#include "platform/linux/defaults/SqliteUserDefaults.h"
#include "profiles/SettingsKeys.h"
#include "support/FakeDesktop.h"

#include <benchmark/benchmark.h>

#include <array>
#include <chrono>
#include <memory>
#include <string>
#include <vector>

namespace orvu {
namespace {

/// As in the program.
StorageOptions storageOptions() {
    StorageOptions options;
    for (const auto& key : passingDocuments) options.passing.emplace_back(key.name);
    return options;
}

/// A full profile in a real database, with an engine whose pages do nothing.
struct World {
    TemporaryFolder folder;
    SqliteUserDefaults defaults{folder.path() / "UserDefaults.sqlite", storageOptions()};
    FakeDesktop desktop;
    VirtualMainLoop& loop = desktop.loop;
    FullProfile profile{20251121, loop.now()};
    AppServices services{desktop.platform(defaults)};

    World() { profile.store(defaults); }
    [[nodiscard]] std::unique_ptr<BrowserStore> open() {
        return std::make_unique<BrowserStore>(services, false, Profile::personal());
    }
};

void resolve(benchmark::State& state) {
    World world;
    constexpr std::array inputs{"https://www.garden7.example/a/b?c=d", "garden7.example/path",
                                "how do garden snails sleep", "!w garden snail"};
    std::size_t next = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            resolveAddress(inputs.at(next++ % inputs.size()), world.services.settings()));
    }
}

void openDefaults(benchmark::State& state) {
    const TemporaryFolder folder;
    const auto file = folder.path() / "UserDefaults.sqlite";
    FakeDesktop desktop;
    {
        SqliteUserDefaults defaults{file};
        FullProfile{20251121, desktop.loop.now()}.store(defaults);
    }
    CallTimes times;
    for (auto _ : state) {
        std::unique_ptr<SqliteUserDefaults> defaults;
        times.measure(state, [&] { defaults = std::make_unique<SqliteUserDefaults>(file); });
        if (!defaults->hasObject("browserVisits")) state.SkipWithError("nothing was there");
    }
    times.report(state);
}

void openStore(benchmark::State& state) {
    World world;
    CallTimes times;
    for (auto _ : state) {
        // Of its own each time: services keep the bookmarks that they once read.
        AppServices services{world.desktop.platform(world.defaults)};
        std::unique_ptr<BrowserStore> store;
        times.measure(state, [&] {
            store = std::make_unique<BrowserStore>(services, false, Profile::personal());
        });
        if (store->visits().size() != FullProfile::visitCount ||
            store->tabs().size() != FullProfile::tabCount) {
            state.SkipWithError("the profile was not restored");
        }
    }
    times.report(state);
}

void recordVisit(benchmark::State& state) {
    World world;
    const auto store = world.open();
    CallTimes times;
    std::size_t next = 0;
    for (auto _ : state) {
        auto& tab = *store->tabs()[next++ % store->tabs().size()];
        tab.webView().load(world.profile.url());
        auto& page = static_cast<FakeWebView&>(tab.webView());
        page.setTitle(world.profile.title());
        world.loop.advance(std::chrono::seconds{1});
        times.measure(state, [&] { tab.didFinish(); });
        page.calls.clear();
        if (store->visits().back().url != tab.url()) state.SkipWithError("nothing was recorded");
    }
    times.report(state);
}

void saveSession(benchmark::State& state) {
    World world;
    const auto store = world.open();
    CallTimes times;
    std::size_t next = 0;
    for (auto _ : state) {
        // Twice a pin of one tab: what it does beside saving the session is next to nothing.
        auto& tab = *store->tabs()[next++ / 2 % 100];
        times.measure(state, [&] { store->togglePin(tab); });
    }
    times.report(state);
}

void importVisits(benchmark::State& state) {
    World world;
    const std::string before = world.defaults.data("browserVisits").value();
    const auto visits = FullProfile{7, world.loop.now()}.visits();
    CallTimes times;
    for (auto _ : state) {
        world.defaults.setData("browserVisits", before);
        int taken = 0;
        times.measure(state, [&] {
            taken = BrowserStore::importVisits(visits, Profile::personal(), world.defaults,
                                               world.services.notifications());
        });
        if (taken != std::ssize(visits)) state.SkipWithError("visits were not taken");
    }
    times.report(state);
}

void bookmarksMatching(benchmark::State& state) {
    World world;
    const auto& store = world.services.bookmarks().store(Profile::personal());
    constexpr std::array queries{"g", "garden", "museum no such page", "Öffnung"};
    CallTimes times;
    std::size_t next = 0;
    for (auto _ : state) {
        const auto* const query = queries.at(next++ % queries.size());
        times.measure(state, [&] { benchmark::DoNotOptimize(store.matching(query)); });
    }
    times.report(state);
}

BENCHMARK(resolve)->Name("Resolve")->Unit(benchmark::kMicrosecond);
BENCHMARK(openDefaults)->Name("OpenDefaults")->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK(openStore)->Name("OpenStore")->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK(recordVisit)->Name("RecordVisit")->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK(saveSession)->Name("SaveSession")->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK(importVisits)->Name("ImportVisits")->Unit(benchmark::kMillisecond)->UseManualTime();
BENCHMARK(bookmarksMatching)
    ->Name("BookmarksMatching")
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime();

}  // namespace
}  // namespace orvu

BENCHMARK_MAIN();
