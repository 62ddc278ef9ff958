#include "foundation/json/Json.h"
#include "foundation/json/JsonSurrogates.h"
#include "pagetools/ReaderExtraction.h"

#include <benchmark/benchmark.h>

#include <string>

namespace orvu {
namespace {

/// What a page answers that has as much to read as a reader takes.
std::string maxAnswerBytes() {
    std::string text;
    while (text.size() < 4000)
        text += "The keeper wrote down the wind, and \"what he had seen\".\n";
    text.resize(4000);
    JsonWriter writer;
    writer.beginObject().key("title").value("Long").key("blocks").beginArray();
    for (int block = 0; block < 600; ++block) {
        writer.beginArray().value("p").value(text).endArray();
    }
    writer.endArray().endObject();
    return std::move(writer).finish().value();
}

/// From the page's answer to the article.
void readerArticle(benchmark::State& state) {
    const ScriptResult answer{ScriptResult::Kind::json, maxAnswerBytes()};
    const ReaderExtraction::Page page{*Url::parse("https://a.example/"), "Tab", "a.example"};
    for (auto _ : state) {
        const auto article = ReaderExtraction::article(answer, page);
        if (!article || article->blocks.size() != 600) state.SkipWithError("no article");
        benchmark::DoNotOptimize(article);
    }
}

void replaceHalves(benchmark::State& state) {
    const std::string answer = maxAnswerBytes();
    for (auto _ : state) benchmark::DoNotOptimize(withLoneSurrogatesReplaced(answer));
}

BENCHMARK(readerArticle)->Name("ReaderArticle")->Unit(benchmark::kMillisecond);
BENCHMARK(replaceHalves)->Name("ReaderAnswerHalves")->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace orvu
