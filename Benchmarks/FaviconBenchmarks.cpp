#include "fakes/FakeFileIO.h"
#include "fakes/FakeHttpSession.h"
#include "fakes/FakeImageCodec.h"
#include "fakes/VirtualMainLoop.h"
#include "platform/linux/images/DecoderProgram.h"
#include "platform/linux/images/decoder/PictureDecoding.h"
#include "site/Favicons.h"
#include "support/IconFiles.h"

#include <benchmark/benchmark.h>
#include <glib.h>

#include <string>

namespace orvu {
namespace {

/// From a file's bytes to pixels.
void decodeIcon(benchmark::State& state, const std::string& bytes) {
    for (auto _ : state) {
        const auto image = decodedPicture(bytes);
        if (!image) state.SkipWithError("no picture");
        benchmark::DoNotOptimize(image);
    }
}

void lookUpIcon(benchmark::State& state) {
    VirtualMainLoop loop;
    FakeHttpSession http;
    FakeImageCodec codec;
    FakeFileIO files;
    FaviconStore store{http, codec, files, "icons"};
    constexpr int sites = 2000;
    for (int i = 0; i < sites; ++i) {
        store.set(FakeImageCodec::image("x"), std::to_string(i) + ".example",
                  Persistence::persistent);
    }
    for (auto _ : state)
        benchmark::DoNotOptimize(store.icon("www.1234.example", Persistence::persistent));
}

/// What the start of the decoder costs the main thread, which does not wait until it is ready.
void startDecoder(benchmark::State& state) {
    const auto command = decoderCommand(installedDecoder(), ConfinedProcess::Isolation::bubblewrap);
    for (auto _ : state) {
        auto process = ConfinedProcess::start(command, {.said = [](auto) {}, .ended = [] {}});
        if (!process) state.SkipWithError("no process");
        state.PauseTiming();
        process.reset();
        while (g_main_context_iteration(nullptr, FALSE)) continue;
        state.ResumeTiming();
    }
}

BENCHMARK(startDecoder)->Name("DecoderStart")->Iterations(100);
BENCHMARK_CAPTURE(decodeIcon, ico32, IconFiles::icoOfPng(IconFiles::png(32), 32))
    ->Name("FaviconDecode/ico32");
BENCHMARK_CAPTURE(decodeIcon, png180, IconFiles::png(180))->Name("FaviconDecode/png180");
BENCHMARK_CAPTURE(decodeIcon, png512, IconFiles::png(512))->Name("FaviconDecode/png512");
BENCHMARK(lookUpIcon)->Name("FaviconLookup");

}  // namespace
}  // namespace orvu
