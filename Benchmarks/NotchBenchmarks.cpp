#include "CallTimes.h"
#include "FullProfile.h"

#include "foundation/text/Text.h"
#include "notch/AddressNotchBody.h"
#include "notch/candidates/NotchCandidates.h"
#include "notch/candidates/NotchSnapshot.h"
#include "search/SearchSuggester.h"
#include "support/OwnNotch.h"
#include "support/FakeDesktop.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
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

/// What stands in the field after each key while these texts are typed.
std::vector<std::string> typing() {
    std::vector<std::string> result;
    for (const std::string_view text : {"garden museum letters", "www.archive7.example/notes",
                                        "öffnung der gärten", "!w museum", "zebra crossing"}) {
        const auto count = characterCount(text);
        for (std::size_t length = 1; length <= count; ++length) {
            result.emplace_back(firstCharacters(text, length));
        }
    }
    return result;
}

NotchQuestion questionFor(std::string query) {
    NotchQuestion question{.query = std::move(query),
                           .predictions = {"garden gate", "garden snail", "gardens", "gardening",
                                           "garden chairs", "garden tools"},
                           .shortTime = [](Date) { return std::string{"12:00"}; }};
    return question;
}

/// Asks for everything under the field, with each of the queries in turn.
void keystroke(benchmark::State& state, const std::vector<std::string>& queries) {
    const NotchProfile profile;
    NotchSnapshot snapshot;
    profile.give(snapshot);
    std::vector<NotchQuestion> questions;
    for (const auto& query : queries) questions.push_back(questionFor(query));
    CallTimes times;
    std::size_t next = 0;
    for (auto _ : state) {
        const auto& question = questions[next++ % questions.size()];
        times.measure(state, [&] {
            const NotchCandidates candidates{snapshot, question};
            benchmark::DoNotOptimize(candidates.entries().size());
        });
    }
    times.report(state);
}

/// A window with the full profile whose notch is open, as the program makes it.
struct OpenNotch {
    FakeDesktop desktop;
    AppServices services{desktop.platform()};
    OwnNotch notch;
    NotchSnapshot snapshot;
    std::shared_ptr<BrowserStore> store;
    std::unique_ptr<AddressNotchBody> body;

    OpenNotch() {
        FullProfile{20251121, desktop.loop.now()}.store(desktop.defaults);
        store = std::make_shared<BrowserStore>(services, false, Profile::personal());
        body = std::make_unique<AddressNotchBody>(notch, store, store->active(), snapshot, services,
                                                  services.makeSuggestions());
        notch.open("");
        body->setCaretAtEnd(true);
    }
    /// Lets the engine suggest something for the text, which it takes to be misspelt.
    void suggest(const std::string& text, const std::string& answer) {
        notch.setQuery(text);
        desktop.loop.advance(SearchSuggester::debounce);
        const auto asked = desktop.suggestionRequests.open();
        if (!asked.empty()) desktop.suggestionRequests.answer(asked.front(), 200, answer);
        desktop.loop.advance({});
        body->refresh();
    }
};

/// All that one key costs from the field's new text to rows that can be drawn: what may be sent is
/// judged, all is computed, and computed once more in the frame that draws it.
void wholeKeystroke(benchmark::State& state) {
    OpenNotch open;
    open.suggest("garden museun lettres", R"(["", ["garden museum letters", "garden gnomes"]])");
    if (!open.body->correction()) state.SkipWithError("no correction is offered");
    const auto queries = typing();
    CallTimes times;
    std::size_t next = 0;
    for (auto _ : state) {
        // Every other text is the misspelt one, whose edits are counted.
        const bool misspelt = next++ % 2 == 0;
        const std::string& query =
            misspelt ? std::string{"garden museun lettres"} : queries[next / 2 % queries.size()];
        times.measure(state, [&] {
            open.notch.setQuery(query);
            open.body->refresh();
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

void forget(benchmark::State& state) {
    NotchProfile profile;
    NotchSnapshot snapshot;
    profile.give(snapshot);
    CallTimes times;
    for (auto _ : state) {
        const auto old = profile.visits.begin() + 100;
        const Visit visit = *old;
        profile.visits.erase(old);
        times.measure(state, [&] { profile.give(snapshot); });
        profile.visits.insert(profile.visits.begin() + 100, visit);
        profile.give(snapshot);
    }
    times.report(state);
}

void registerKeystroke(const std::string& name, const std::vector<std::string>& queries) {
    benchmark::RegisterBenchmark(("NotchKeystroke/" + name).c_str(), keystroke, queries)
        ->Unit(benchmark::kMillisecond)
        ->UseManualTime();
}

/// Some of these are the slowest that were found.
[[maybe_unused]] const bool keystrokesAreRegistered = [] {
    constexpr std::size_t many = 100000;
    registerKeystroke("typing", typing());
    registerKeystroke("empty", {""});
    registerKeystroke("letter", {"g"});
    registerKeystroke("noSuchLetters", {"zz"});
    registerKeystroke("noSuchPhrase", {"museum no such page"});
    registerKeystroke("foreign", {"ИСТОРИЯ", "öffnung no such page ö", "ga\u0308rten"});
    registerKeystroke("bang", {"!w garden"});
    registerKeystroke("manyLetters", {times("a", many)});
    registerKeystroke("manyForeign", {times("ä", many)});
    registerKeystroke("manyMarks", {times("\u0301", many)});
    registerKeystroke("manyBlanks", {times("\u00A0", many) + "a"});
    registerKeystroke("manyMarksBang", {"!" + times("\u0301", many) + " a"});
    registerKeystroke("manyFamilies", {times("👩‍👩‍👧", many)});
    registerKeystroke("maxFoldedBytes", {times("\u0301", 1800)});
    return true;
}();
BENCHMARK(wholeKeystroke)
    ->Name("NotchKeystroke/whole")
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
BENCHMARK(forget)
    ->Name("NotchSnapshotAfterRemoval")
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime();

}  // namespace
}  // namespace orvu
