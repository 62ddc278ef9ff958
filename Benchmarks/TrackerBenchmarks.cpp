#include "core/TrackerBlocker.h"

#include <benchmark/benchmark.h>

namespace orvu {
namespace {

/// The rules against trackers in the engine's written form, which each start makes once.
void trackerRules(benchmark::State& state) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(TrackerBlocker::encodedRules(TrackerBlocker::domains));
    }
}
BENCHMARK(trackerRules)->Name("TrackerRules");

}  // namespace
}  // namespace orvu
