#include "foundation/text/Locale.h"
#include "look/DotFace.h"

#include <benchmark/benchmark.h>

#include <chrono>

namespace orvu {
namespace {

/// All dots of a face, as it is drawn thirty times a second.
void dotFaceCells(benchmark::State& state) {
    double t = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(DotFaceModel::cells(Mood::idle, t, 0));
        t += 0.3;
    }
}
BENCHMARK(dotFaceCells)->Name("DotFaceCells");

/// The time of a visit, as rows of history show it.
void shortTime(benchmark::State& state) {
    const Locale locale{{.lang = "en_US.UTF-8"}};
    const Calendar calendar{"Europe/Berlin"};
    Date visit{780000000.0};
    for (auto _ : state) {
        benchmark::DoNotOptimize(locale.shortTime(visit, calendar));
        visit = visit.after(std::chrono::minutes{1});
    }
}
BENCHMARK(shortTime)->Name("ShortTime");

}  // namespace
}  // namespace orvu
