#include "site/downloads/DownloadName.h"

#include <benchmark/benchmark.h>

#include <string>

namespace orvu {
namespace {

/// The name of a download beside as many of the same name.
void downloadName(benchmark::State& state, const std::string& suggested, int taken) {
    for (auto _ : state) {
        int asked = 0;
        benchmark::DoNotOptimize(DownloadName::free(
            DownloadName::safe(suggested), [&](const std::string&) { return asked++ < taken; }));
    }
}
BENCHMARK_CAPTURE(downloadName, first, "Annual report 2026.pdf", 0)->Name("DownloadName/first");
BENCHMARK_CAPTURE(downloadName, hundredth, "Annual report 2026.pdf", 99)
    ->Name("DownloadName/hundredth");
BENCHMARK_CAPTURE(downloadName, longest, std::string(4096, 'e') + "\u0301:\u202E.tar.gz", 1)
    ->Name("DownloadName/4096bytes");

}  // namespace
}  // namespace orvu
