#include "assistant/Kesto.h"

#include <benchmark/benchmark.h>

#include <string>
#include <string_view>
#include <vector>

namespace orvu {
namespace {

/// So many characters of a page as pages are: some outside ASCII, some of several code points.
std::string pageText(std::size_t characters) {
    constexpr std::string_view words =
        "The keeper's bees are <b>well</b>, naïve & \"happy\"/calm.\n";
    constexpr std::size_t wordsCount = 54;
    std::string text;
    for (std::size_t count = 0; count < characters; count += wordsCount + 1) {
        text += words;
        text += "👩‍🌾";
    }
    return text;
}

/// From four pages, as they are read, to what the model is asked.
void prompt(benchmark::State& state) {
    const Kesto::Page page{pageText(200), "https://a.example/" + pageText(400),
                           pageText(Kesto::pageTextLimit)};
    const std::vector<Kesto::Page> pages(Kesto::pagesLimit, page);
    for (auto _ : state) {
        const std::string asked = Kesto::prompt("What do they have in common?", pages);
        if (asked.size() < Kesto::textBudget) state.SkipWithError("no prompt");
        benchmark::DoNotOptimize(asked);
    }
}

BENCHMARK(prompt)->Name("Prompt")->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace orvu
