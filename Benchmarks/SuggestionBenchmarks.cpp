#include "FullProfile.h"

#include "fakes/FakeHttpSession.h"
#include "fakes/VirtualMainLoop.h"
#include "foundation/json/Json.h"
#include "foundation/RandomText.h"
#include "platform/TemporaryFolder.h"
#include "platform/linux/defaults/SqliteUserDefaults.h"
#include "search/EditDistance.h"
#include "search/SearchSuggester.h"

#include <benchmark/benchmark.h>

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace orvu {
namespace {

/// An engine's answer with so many suggestions, one in ten of them outside ASCII.
std::string answerOf(std::size_t suggestions) {
    JsonWriter writer;
    writer.beginArray().value("sea ott").beginArray();
    for (std::size_t i = 0; i < suggestions; ++i) {
        const std::string number = std::to_string(i);
        writer.value((i % 10 == 9 ? "seeotter für " : "sea otters number ") + number);
    }
    writer.endArray().beginArray().endArray().endArray();
    return std::move(writer).finish().value();
}

void parseSuggestions(benchmark::State& state, const std::string& answer) {
    for (auto _ : state) benchmark::DoNotOptimize(SearchSuggester::parse(answer));
    state.SetBytesProcessed(static_cast<std::int64_t>(answer.size()) * state.iterations());
}

void measureDistance(benchmark::State& state, const std::string& a, const std::string& b) {
    for (auto _ : state) benchmark::DoNotOptimize(editDistance(a, b));
}

/// One key: the text before it is called off, and the text behind it is judged and waits.
void updateSuggestions(benchmark::State& state, const std::string& text) {
    const TemporaryFolder folder;
    SqliteUserDefaults defaults{folder.path() / "UserDefaults.sqlite"};
    const Settings settings{defaults};
    VirtualMainLoop loop;
    FakeHttpSession http;
    SearchSuggester suggester{http, loop, settings, {"en"}};
    for (auto _ : state) suggester.update(text, SearchSuggester::Privacy::ordinary);
    if (loop.pendingTimers() != 1) state.SkipWithError("the text is held back");
}

/// Finds the past searches among all visits, of which one in ten is one.
void findSearches(benchmark::State& state) {
    std::vector<std::optional<Url>> visits;
    FullProfile profile{20251121, VirtualMainLoop{}.now()};
    for (const Visit& visit : profile.visits()) visits.emplace_back(visit.url);
    for (std::size_t i = 0; i < visits.size(); i += 10) {
        visits[i] = Url::parse("https://www.google.com/search?client=x&q=sea+otters+n%C2%BA+" +
                               std::to_string(i));
    }
    for (auto _ : state) {
        for (const auto& url : visits) benchmark::DoNotOptimize(Prefs::searchQuery(url));
    }
}

BENCHMARK_CAPTURE(parseSuggestions, ten, answerOf(10))->Name("SuggestionParse/10");
BENCHMARK_CAPTURE(parseSuggestions, full, answerOf(9500))->Name("SuggestionParse/256KiB");
BENCHMARK_CAPTURE(measureDistance, words, std::string{"sea otetrs"}, std::string{"sea otters"})
    ->Name("EditDistance/words");
BENCHMARK_CAPTURE(measureDistance, marks, repeated("e\u0301a", 60), repeated("e\u0300a", 60))
    ->Name("EditDistance/120marks");
BENCHMARK_CAPTURE(measureDistance, emoji, repeated("👩‍👩‍👧🇩🇪", 60),
                  repeated("👨‍👩‍👧🇩🇪", 60))
    ->Name("EditDistance/120emoji");
BENCHMARK_CAPTURE(updateSuggestions, plain, repeated("sea otters ", 10) + "and others")
    ->Name("SuggestionGate/120");
BENCHMARK_CAPTURE(updateSuggestions, emoji, repeated("👩‍👩‍👧🇩🇪", 60))
    ->Name("SuggestionGate/120emoji");
BENCHMARK_CAPTURE(updateSuggestions, marks, "e" + repeated("\u0301", 4000))
    ->Name("SuggestionGate/4000marks");
BENCHMARK(findSearches)->Name("SearchQuery")->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace orvu
