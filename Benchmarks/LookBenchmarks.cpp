#include "look/DotFace.h"

#include <benchmark/benchmark.h>

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

}  // namespace
}  // namespace orvu
