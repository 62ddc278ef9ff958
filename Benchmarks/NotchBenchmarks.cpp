#include "CallTimes.h"
#include "FullProfile.h"

#include "notch/NotchCandidates.h"
#include "notch/NotchSnapshot.h"

#include <benchmark/benchmark.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace orvu {
namespace {

std::string times(std::string_view piece, std::size_t count) {
    std::string result;
    for (std::size_t i = 0; i < count; ++i) result += piece;
    return result;
}

/// A full profile as the notch knows it; every tenth visit is a page of results.
struct NotchProfile {
    FullProfile profile{20251121, Date{}};
    std::vector<Visit> visits = profile.visits();
    std::vector<BookmarkStore::Bookmark> bookmarks;
    std::vector<NotchTab> tabs;

    NotchProfile() {
        for (std::size_t index = 0; index < visits.size(); index += 10) {
            visits[index].url =
                *Url::parse("https://www.google.com/search?q=" +
                            percentEncoded(profile.title(), QueryCharacters::bangQuery));
        }
        for (std::size_t count = 0; count < FullProfile::bookmarkCount; ++count) {
            bookmarks.push_back({Uuid::random(), profile.url(), profile.title(), Date{}});
        }
        for (std::size_t count = 0; count < FullProfile::tabCount; ++count) {
            tabs.push_back({Uuid::random(), profile.title(), profile.url()});
        }
    }
    void give(NotchSnapshot& snapshot) const {
        snapshot.setVisits(visits);
        snapshot.setLatestOfToday({visits.end() - 4, visits.end()});
        snapshot.setBookmarks(bookmarks);
        snapshot.setTabs(tabs, tabs.front().id);
    }
};

/// Queries of every kind, the slow ones included.
const std::vector<std::pair<std::string, std::string>>& queries() {
    static const std::vector<std::pair<std::string, std::string>> result{
        {"empty", ""},
        {"letter", "g"},
        {"word", "garden"},
        {"host", "www.garden"},
        {"two letters", "ma"},
        {"last letters", "zz"},
        {"phrase", "museum notes"},
        {"no match", "museum no such page"},
        {"common letters", "etaeta"},
        {"foreign", "öffnung"},
        {"foreign capitals", "ИСТОРИЯ"},
        {"no match foreign", "öffnung no such page ö"},
        {"decomposed", "ga\u0308rten"},
        {"bang", "!w garden"},
        {"site", "garden7.example/notes"},
        {"100k letters", times("a", 100000)},
        {"100k foreign", times("ä", 100000)},
        {"100k marks", times("\u0301", 100000)},
        {"100k emoji", times("👩‍👩‍👧", 100000)},
        {"100k blanks", times("\u00A0", 100000) + "a"},
        {"100k bang", "!" + times("\u0301", 100000) + " a"},
        {"just foldable", times("\u0301", 1800)},
    };
    return result;
}

NotchQuestion questionFor(std::string query) {
    NotchQuestion question{.query = std::move(query),
                           .predictions = {"garden gate", "garden snail", "gardens", "gardening",
                                           "garden chairs", "garden tools"},
                           .shortTime = [](Date) { return std::string{"12:00"}; }};
    return question;
}

void keystroke(benchmark::State& state) {
    const NotchProfile profile;
    NotchSnapshot snapshot;
    profile.give(snapshot);
    const auto& [name, query] = queries().at(static_cast<std::size_t>(state.range(0)));
    const auto question = questionFor(query);
    state.SetLabel(name);
    CallTimes times;
    for (auto _ : state) {
        times.measure(state, [&] {
            const NotchCandidates candidates{snapshot, question};
            benchmark::DoNotOptimize(candidates.entries().size());
        });
    }
    times.report(state);
}

void topHit(benchmark::State& state) {
    const NotchProfile profile;
    NotchSnapshot snapshot;
    profile.give(snapshot);
    for (auto _ : state) benchmark::DoNotOptimize(snapshot.topHits().best("ma"));
}

void snapshotFirst(benchmark::State& state) {
    const NotchProfile profile;
    CallTimes times;
    for (auto _ : state) {
        std::optional<NotchSnapshot> snapshot;
        times.measure(state, [&] { profile.give(snapshot.emplace()); });
    }
    times.report(state);
}

void snapshotAfterVisit(benchmark::State& state) {
    NotchProfile profile;
    NotchSnapshot snapshot;
    profile.give(snapshot);
    CallTimes times;
    for (auto _ : state) {
        profile.visits.erase(profile.visits.begin());
        profile.visits.push_back(
            {Uuid::random(), profile.profile.url(), profile.profile.title(), Date{}});
        times.measure(state, [&] { profile.give(snapshot); });
    }
    times.report(state);
}

BENCHMARK(keystroke)
    ->Name("NotchKeystroke")
    ->DenseRange(0, 21)
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime();
BENCHMARK(topHit)->Name("NotchTopHit")->Unit(benchmark::kMicrosecond);
BENCHMARK(snapshotFirst)
    ->Name("NotchSnapshotFirst")
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime();
BENCHMARK(snapshotAfterVisit)
    ->Name("NotchSnapshotAfterVisit")
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime();

}  // namespace
}  // namespace orvu
