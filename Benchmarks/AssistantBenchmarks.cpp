#include "assistant/Kesto.h"
#include "platform/TemporaryFolder.h"
#include "platform/linux/model/ModelFinder.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

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

/// The model files of this computer, all of which are known: 30 in a store of lists, 30 in folders.
void modelFiles(benchmark::State& state) {
    constexpr int count = 30;
    const TemporaryFolder home;
    const auto write = [&](const std::filesystem::path& name, const std::string& content) {
        std::filesystem::create_directories((home.path() / name).parent_path());
        std::ofstream{home.path() / name} << content;
    };
    for (int i = 0; i < count; ++i) {
        const std::string number = std::to_string(i + 10);
        const std::string digits = std::string(62, 'a') + number;
        write("store/blobs/sha256-" + digits, "GGUF");
        write("store/manifests/registry.example/library/otter/" + number,
              R"({"layers":[{"mediaType":"application/vnd.ollama.image.model","digest":"sha256:)" +
                  digits + "\"}]}");
        write("models/maker/otter-" + number + "/model.gguf", "GGUF");
    }
    const ModelPlaces places{.folders = {{home.path() / "models", 3}},
                             .ollamaStores = {home.path() / "store"}};
    std::vector<KnownModel> known;
    for (auto& each : findModels(places)) {
        known.push_back({each, {.canAnswer = true, .name = "Otter", .contextBytes = 100}});
    }
    const std::string remembered = encodedModels(known);
    for (auto _ : state) {
        const auto models = decodedModels(remembered);
        const auto files = findModels(places);
        const auto isKnown = [&](const ModelFile& file) {
            return std::ranges::find(models, file, &KnownModel::file) != models.end();
        };
        if (files.size() != 2 * count || !std::ranges::all_of(files, isKnown)) {
            state.SkipWithError("a file isn't known");
        }
        benchmark::DoNotOptimize(modelToRun(models, {.freeMemory = freeMemory(), .threads = 3}));
    }
}

BENCHMARK(modelFiles)->Name("ModelFiles")->Unit(benchmark::kMicrosecond);
BENCHMARK(prompt)->Name("Prompt")->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace orvu
