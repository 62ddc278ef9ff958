#include "engine/EngineWorld.h"

#include "ProjectPaths.h"
#include "foundation/json/Json.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace orvu {
namespace {

using Pairs = std::vector<std::pair<std::string, std::string>>;

std::string contents(const std::filesystem::path& file) {
    std::ifstream stream{file, std::ios::binary};
    EXPECT_TRUE(stream) << file;
    return {std::istreambuf_iterator<char>{stream}, {}};
}

/// What the reader is to make of a page; nothing where there is no article in it.
struct Expected {
    std::string title;
    std::int64_t minutes = 0;
    Pairs blocks;

    friend bool operator==(const Expected&, const Expected&) = default;
    friend void PrintTo(const Expected& value, std::ostream* out) {
        *out << value.title << ", " << value.minutes << " min";
        for (const auto& [kind, text] : value.blocks) *out << "\n  " << kind << ": " << text;
    }
};

std::optional<Expected> read(const std::string& json) {
    const auto document = JsonDocument::parse(json);
    EXPECT_TRUE(document);
    if (!document || !document->root().isObject()) return std::nullopt;
    const auto root = document->root();
    Expected result{std::string{root.field("title")->text().value()},
                    root.field("minutes")->integer().value(),
                    {}};
    const auto blocks = root.field("blocks")->array();
    for (const auto& block : blocks.value()) {
        const auto pair = block.array();
        result.blocks.emplace_back(pair->at(0).text().value(), pair->at(1).text().value());
    }
    return result;
}

std::optional<Expected> shown(const std::optional<ReaderArticle>& article) {
    if (!article) return std::nullopt;
    Expected result{article->title, article->minutes, {}};
    for (const auto& block : article->blocks) result.blocks.emplace_back(block.kind, block.text);
    return result;
}

std::string typeOf(const std::filesystem::path& page) {
    if (page.extension() == ".xhtml") return "application/xhtml+xml";
    return page.extension() == ".svg" ? "image/svg+xml" : "text/html";
}

class ReaderTest : public EngineTest {
protected:
    static constexpr auto host = "www.localhost";

    ReaderTest() {
        page->onVisit = [this](BrowserTab&) { ++visits; };
        page->onOpenInNewTab = [](const UrlRequest&) {};
    }
    /// The article of the page at a path of the server.
    std::optional<ReaderArticle> articleAt(const std::string& path) {
        const int before = visits;
        page->webView().load(url(path, host));
        EXPECT_TRUE(waitFor([&] { return visits > before; })) << path;
        auto task = page->readerArticle();
        task.start();
        EXPECT_TRUE(waitFor([&] { return task.isDone(); })) << path;
        return task.isDone() ? task.result() : std::nullopt;
    }

    std::unique_ptr<WebConfiguration> configuration =
        engine.makeConfiguration(WebsiteDataStore::nonPersistentDataStore());
    std::shared_ptr<BrowserTab> page =
        std::make_shared<BrowserTab>(*configuration, UrlRequest{}, loop, services().favicons(),
                                     services().permissions(), Persistence::ephemeral);
    int visits = 0;
};

TEST_F(ReaderTest, EveryPageOfTheCorpusGivesItsArticle) {
    std::vector<std::filesystem::path> pages;
    for (const auto& entry : std::filesystem::directory_iterator{ProjectPaths::readerCorpus}) {
        if (entry.path().extension() != ".json") pages.push_back(entry.path());
    }
    std::ranges::sort(pages);
    EXPECT_GE(pages.size(), 30U);

    for (const auto& file : pages) {
        SCOPED_TRACE(file.filename());
        const std::string path = "/" + file.filename().string();
        server.serve(path, LoopbackServer::Answer{contents(file), typeOf(file)});

        const auto article = articleAt(path);

        auto expected = file;
        EXPECT_EQ(shown(article), read(contents(expected.replace_extension(".expected.json"))));
        if (!article) continue;
        EXPECT_EQ(article->site, "localhost");
        EXPECT_EQ(article->url, url(path, host));
    }
}

TEST_F(ReaderTest, PageInWhichNoScriptRunsAtAllHasNoArticle) {
    const auto file = std::filesystem::path{ProjectPaths::readerCorpus} / "news.html";
    server.serve("/boxed",
                 LoopbackServer::Answer{
                     contents(file), "text/html", 200, {{"Content-Security-Policy", "sandbox"}}});

    EXPECT_FALSE(articleAt("/boxed"));
}

TEST_F(ReaderTest, ReadingLeavesThePageAsItIs) {
    server.serve("/page",
                 contents(std::filesystem::path{ProjectPaths::readerCorpus} / "wiki.html"));
    const auto markup = [&] {
        return evaluate(page->webView(), "document.documentElement.outerHTML + scrollY").text;
    };
    EXPECT_TRUE(articleAt("/page"));
    const std::string before = markup();

    auto task = page->readerArticle();
    task.start();
    EXPECT_TRUE(waitFor([&] { return task.isDone(); }));

    EXPECT_NE(before, "");
    EXPECT_EQ(markup(), before);
}

TEST_F(ReaderTest, TabMayGoWhileItsPageIsRead) {
    server.serve("/page",
                 contents(std::filesystem::path{ProjectPaths::readerCorpus} / "wiki.html"));
    EXPECT_TRUE(articleAt("/page"));
    auto task = page->readerArticle();
    task.start();

    page.reset();
    settle();

    EXPECT_TRUE(!task.isDone() || !task.result());
}

}  // namespace
}  // namespace orvu
