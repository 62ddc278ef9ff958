#include "foundation/RandomText.h"
#include "foundation/text/Text.h"
#include "search/answers/PageReduction.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace orvu {
namespace {

/// A page of so many bytes as pages are: more markup than words, some of these outside ASCII.
std::string ordinaryPage(std::size_t bytes) {
    constexpr std::string_view head =
        "<!doctype html>\n<html lang=\"en\"><head><title>Otters &amp; others</title>\n"
        "<style>.card > p { margin: 0 auto; }</style></head>\n<body><header><h1>Otters</h1>"
        "<nav><a href=\"/one\">One</a> <a href=\"/two\">Two</a></nav></header>\n<main>\n";
    constexpr std::string_view card =
        "  <div class=\"card wide\" data-id=\"4711\">\n"
        "    <svg viewBox=\"0 0 24 24\"><path d=\"M12 2L2 7l10 5 10-5-10-5z\"/></svg>\n"
        "    <!-- one of many -->\n"
        "    <p class=\"text\">The keeper&#39;s otters are <b>well</b>, na\u00EFve&nbsp;&amp;\n"
        "      happy; see <a href=\"/otters?x=1&amp;y=2\">what they do</a> all day long.</p>\n"
        "    <script>if (1 < 2) cards.push({\"id\": 4711, \"seen\": false});</script>\n"
        "  </div>\n";
    return joined({head, repeated(card, bytes / card.size()), "</main></body></html>\n"});
}

/// As many of a piece as are read of a page.
std::string hostilePage(std::string_view piece) {
    return repeated(piece, PageReduction::maxBytes / piece.size());
}

void reducePage(benchmark::State& state, const std::string& page) {
    for (auto _ : state) benchmark::DoNotOptimize(PageReduction::text(page));
    state.SetBytesProcessed(static_cast<std::int64_t>(page.size()) * state.iterations());
}

BENCHMARK_CAPTURE(reducePage, ordinary, ordinaryPage(100'000))
    ->Name("PageReduction/ordinary")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(reducePage, long, ordinaryPage(PageReduction::maxBytes))
    ->Name("PageReduction/longest")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(reducePage, brackets, hostilePage("<"))
    ->Name("PageReduction/hostileBrackets")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(reducePage, openTags, hostilePage("<script"))
    ->Name("PageReduction/hostileOpenTags")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(reducePage, closingTags, hostilePage("</nav>"))
    ->Name("PageReduction/hostileClosingTags")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(reducePage, entities, hostilePage("&amp;"))
    ->Name("PageReduction/hostileEntities")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(reducePage, marks, hostilePage("\u0301"))
    ->Name("PageReduction/hostileMarks")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(reducePage, noUtf8, hostilePage("\xFF"))
    ->Name("PageReduction/hostileLatin1")
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace orvu
