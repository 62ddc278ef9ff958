#include "profiles/ProfileIcons.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cstddef>
#include <string_view>

namespace orvu {
namespace {

/// What a person types, letter by letter, and what finds next to everything or nothing.
void iconSearch(benchmark::State& state) {
    constexpr std::array<std::string_view, 8> searches{
        "s", "se", "sea", "private lock", "Travel", "fill", "no such icon", "Öffnung"};
    std::size_t next = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(ProfileIcons::icons(searches.at(next++ % searches.size())));
    }
    if (ProfileIcons::icons("sea").size() != 3) state.SkipWithError("not what was searched for");
}

BENCHMARK(iconSearch)->Name("IconSearch")->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace orvu
