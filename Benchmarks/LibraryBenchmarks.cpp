#include "CallTimes.h"
#include "FullProfile.h"

#include "foundation/text/Text.h"
#include "library/LibraryView.h"
#include "support/FakeDesktop.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvu {
namespace {

/// More rows than the largest window has in sight.
constexpr std::size_t rowsInSight = 60;

/// A window with the full profile whose library is open.
struct OpenLibrary {
    FakeDesktop desktop;
    std::optional<AppServices> services;
    std::unique_ptr<BrowserStore> store;

    explicit OpenLibrary(LibrarySection section) {
        FullProfile{20251121, desktop.loop.now()}.store(desktop.defaults);
        desktop.calendar = Calendar{"Europe/Berlin"};
        services.emplace(desktop.platform());
        store = std::make_unique<BrowserStore>(*services, false, Profile::personal());
        store->setLibrarySection(section);
    }
};

/// What a view asks for before it can draw: the lines, and what those at the top say.
std::size_t draw(LibraryView& view, std::size_t rows = rowsInSight) {
    const auto& entries = view.entries();
    std::size_t bytes = 0;
    for (std::size_t i = 0; i < std::min(rows, entries.size()); ++i) {
        const auto row = view.row(entries[i]);
        bytes += row ? row->title.size() + row->host.size() + row->time.size()
                     : view.dayTitle(entries[i]).size();
    }
    return bytes;
}

void open(benchmark::State& state, LibrarySection section, std::size_t rows) {
    OpenLibrary library{section};
    CallTimes times;
    for (auto _ : state) {
        times.measure(state, [&] {
            LibraryView view{*library.store, *library.services};
            benchmark::DoNotOptimize(draw(view, rows));
        });
    }
    times.report(state);
}

std::vector<std::string> typing() {
    std::vector<std::string> result;
    for (const std::string_view text : {"garden museum letters", "www.archive7.example/notes",
                                        "öffnung der gärten", "zebra crossing"}) {
        const auto count = characterCount(text);
        for (std::size_t length = 1; length <= count; ++length) {
            result.emplace_back(firstCharacters(text, length));
        }
    }
    return result;
}

void filter(benchmark::State& state, LibrarySection section) {
    OpenLibrary library{section};
    LibraryView view{*library.store, *library.services};
    const auto queries = typing();
    CallTimes times;
    std::size_t next = 0;
    for (auto _ : state) {
        const std::string& query = queries[next++ % queries.size()];
        times.measure(state, [&] {
            view.query.set(query);
            benchmark::DoNotOptimize(draw(view));
        });
    }
    times.report(state);
}

/// The first key of a search, for which all texts are prepared.
void filterFirst(benchmark::State& state) {
    OpenLibrary library{LibrarySection::history};
    CallTimes times;
    for (auto _ : state) {
        LibraryView view{*library.store, *library.services};
        draw(view);
        times.measure(state, [&] {
            view.query.set("g");
            benchmark::DoNotOptimize(draw(view));
        });
    }
    times.report(state);
}

/// A visit is forgotten while something is searched for.
void filterAfterRemoval(benchmark::State& state) {
    std::optional<OpenLibrary> library;
    std::optional<LibraryView> view;
    CallTimes times;
    for (auto _ : state) {
        if (!library || library->store->visits().size() < 4000) {
            view.reset();
            library.emplace(LibrarySection::history);
            view.emplace(*library->store, *library->services);
            view->query.set("g");
            draw(*view);
        }
        library->store->removeVisit(Visit{library->store->visits()[100]});
        times.measure(state, [&] { benchmark::DoNotOptimize(draw(*view)); });
    }
    times.report(state);
}

void add(const char* name, auto function, auto... arguments) {
    benchmark::RegisterBenchmark(name, function, arguments...)
        ->Unit(benchmark::kMillisecond)
        ->UseManualTime();
}

[[maybe_unused]] const bool areRegistered = [] {
    constexpr std::size_t all = std::numeric_limits<std::size_t>::max();
    add("LibraryOpen/history", open, LibrarySection::history, rowsInSight);
    add("LibraryOpen/bookmarks", open, LibrarySection::bookmarks, rowsInSight);
    add("LibraryOpen/allRows", open, LibrarySection::history, all);
    add("LibraryFilter/history", filter, LibrarySection::history);
    add("LibraryFilter/bookmarks", filter, LibrarySection::bookmarks);
    add("LibraryFilter/firstKey", filterFirst);
    add("LibraryFilter/afterRemoval", filterAfterRemoval);
    return true;
}();

}  // namespace
}  // namespace orvu
