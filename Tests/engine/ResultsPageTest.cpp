#include "engine/EngineWorld.h"

#include "ProjectPaths.h"
#include "foundation/json/Json.h"
#include "search/answers/ResultsPage.h"
#include "support/FoundResults.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace orvu {
namespace {

namespace fs = std::filesystem;
using Results = std::vector<FoundResult>;

std::string contents(const fs::path& file) {
    std::ifstream stream{file, std::ios::binary};
    EXPECT_TRUE(stream) << file;
    return {std::istreambuf_iterator<char>{stream}, {}};
}

/// The pages of the corpus, sorted by name.
std::vector<fs::path> corpus() {
    std::vector<fs::path> pages;
    for (const auto& entry : fs::directory_iterator{ProjectPaths::resultsCorpus}) {
        if (entry.path().extension() != ".json") pages.push_back(entry.path());
    }
    std::ranges::sort(pages);
    return pages;
}

bool isNamed(const fs::path& page, std::string_view part) {
    return page.filename().string().contains(part);
}

std::string typeOf(const fs::path& page) {
    return page.extension() == ".xhtml" ? "application/xhtml+xml" : "text/html";
}

class ResultsPageTest : public EngineTest {
protected:
    static constexpr auto host = "search.localhost";

    /// Loads a page of the corpus, and waits for results that it draws late.
    void open(const fs::path& file) {
        const std::string path = "/" + file.filename().string();
        server.serve(path, LoopbackServer::Answer{contents(file), typeOf(file)});
        const auto before = delegate.finishedTitles.size();
        view->load(url(path, host));
        ASSERT_TRUE(waitFor([&] { return delegate.finishedTitles.size() > before; }));
        if (isNamed(file, "-late")) {
            EXPECT_TRUE(waitFor([&] { return !results().empty(); }));
        }
    }
    /// What the script answers for the page as it stands.
    ScriptResult answer() { return evaluate(*view, std::string{ResultsPage::script}); }
    Results results() { return ResultsPage::results(answer()); }
    /// What the file beside a page says that it lists. An address from "/" on is the server's.
    Results expected(fs::path file) const {
        const auto document =
            JsonDocument::parse(contents(file.replace_extension(".expected.json")));
        EXPECT_TRUE(document) << file;
        Results results;
        if (!document) return results;
        const auto entries = document->root().array();
        for (const JsonValue& entry : entries.value()) {
            const auto fields = entry.array().value();
            EXPECT_EQ(fields.size(), 4U) << file;
            const std::string address{fields.at(1).text().value()};
            const auto full = address.starts_with('/') ? url(address, host) : *Url::parse(address);
            results.push_back({std::string{fields.at(0).text().value()}, full,
                               std::string{fields.at(2).text().value()}, fields.at(3).url()});
        }
        return results;
    }

    std::unique_ptr<WebConfiguration> configuration =
        engine.makeConfiguration(WebsiteDataStore::nonPersistentDataStore());
    std::unique_ptr<WebView> view = configuration->makeWebView();
    RecordingDelegate delegate{*view};
};

TEST_F(ResultsPageTest, CorpusHasPagesOfEachEngineAndHostileOnes) {
    const auto pages = corpus();
    const auto count = [&pages](std::string_view begin) {
        return std::ranges::count_if(pages, [begin](const fs::path& page) {
            return page.filename().string().starts_with(begin);
        });
    };

    EXPECT_GE(count("google-"), 6);
    EXPECT_GE(count("bing-"), 6);
    EXPECT_GE(count("duckduckgo-"), 6);
    EXPECT_GE(count("ecosia-"), 6);
    EXPECT_GE(count("hostile-"), 10);
}

TEST_F(ResultsPageTest, EveryPageOfTheCorpusGivesItsResults) {
    for (const auto& file : corpus()) {
        SCOPED_TRACE(file.filename());
        open(file);

        const auto answered = answer();

        EXPECT_EQ(ResultsPage::results(answered), expected(file));
        EXPECT_EQ(answered.kind, ScriptResult::Kind::json);
        EXPECT_LT(answered.text.size(), 20000U);
    }
}

TEST_F(ResultsPageTest, PageThatIsStillToDrawItsResultsHasNone) {
    server.serve("/page", R"(<!doctype html><div id="search"></div><script>
        addEventListener('draw', () => {
            document.getElementById('search').innerHTML =
                '<div><a href="https://a.example/"><h3>A</h3></a> Text</div>';
        });
        </script>)");
    loadAndWait(*view, delegate, "/page");
    EXPECT_EQ(results(), Results{});

    static_cast<void>(evaluate(*view, "dispatchEvent(new Event('draw')); 1"));

    EXPECT_EQ(results(), (Results{{"A", *Url::parse("https://a.example/"), "Text", std::nullopt}}));
}

TEST_F(ResultsPageTest, ScriptCutsItsTextsItselfAndLeavesNoHalfCharacter) {
    server.serve("/page", R"(<!doctype html><meta charset="utf-8"><script>
        document.write('<div class="g"><a jsname="x" href="https://a.example/"><h3>' +
            'a'.repeat(999) + '😀</h3></a> <cite>' + 'b'.repeat(999) + '😀</cite> ' +
            '😀'.repeat(900) + '</div>');
        </script>)");
    loadAndWait(*view, delegate, "/page");

    const auto lengths = evaluate(
        *view, std::string{ResultsPage::script} + ".map(each => each.map(text => text.length))");

    EXPECT_EQ(lengths.text, "[[999,18,360,999]]");
    EXPECT_FALSE(answer().text.contains("\ufffd"));
}

TEST_F(ResultsPageTest, ReadingLeavesThePageAsItIs) {
    open(fs::path{ProjectPaths::resultsCorpus} / "google-ordinary.html");
    const auto markup = [&] {
        return evaluate(*view, "document.documentElement.outerHTML + scrollY").text;
    };
    const std::string before = markup();

    EXPECT_EQ(results().size(), ResultsPage::maxResults);

    EXPECT_NE(before, "");
    EXPECT_EQ(markup(), before);
}

}  // namespace
}  // namespace orvu
