#include "engine/EngineWorld.h"

#include "foundation/json/Json.h"
#include "search/answers/ResultsPage.h"

namespace orvu {
namespace {

/// A page that wants to keep its reader busy: a script that builds it, with `add`, which appends
/// markup, at hand.
struct CostlyPage {
    const char* name;
    std::size_t results;  ///< how many of them it has all the same
    const char* script;
};

constexpr CostlyPage pages[]{
    {"Ordinary", 6, R"(
        for (let i = 0; i < 10; ++i) add(`<div class="g"><a href="https://example.org/${i}">
            <h3>Result ${i}</h3><cite>https://example.org › ${i}</cite></a>
            <div>${'What the page says of it. '.repeat(10)}</div></div>`);
    )"},
    {"HeadsThatLeadBackIntoTheEngine", 0, R"(
        add('<a href="https://www.google.com/">' + '<h3>Back</h3>'.repeat(50000) + '</a>');
    )"},
    {"HeadsOfOneLink", 1, R"(
        add('<a href="https://example.org/">' + '<h3>Again</h3>'.repeat(50000) + '</a>');
    )"},
    {"LinksThatLeadBackIntoTheEngine", 0, R"(
        add('<a href="https://www.google.com/"><h3>Back</h3></a>'.repeat(50000));
    )"},
    {"OneBoxOfAMegabyte", 6, R"(
        let links = '';
        for (let i = 0; i < 6; ++i) links += `<a href="https://example.org/${i}"><h3>${i}</h3></a>`;
        add(`<article>${links}<p>${'All the words. '.repeat(70000)}</p></article>`);
    )"},
    {"HugeBoxes", 6, R"(
        for (let i = 0; i < 6; ++i) add(`<article><a href="https://example.org/${i}"><h3>${i}</h3>
            </a><p>${'All the words. '.repeat(14000)}</p></article>`);
    )"},
    {"BoxesInBoxesOfManyElements", 6, R"(
        let all = '<i>a</i> '.repeat(50000);
        for (let i = 0; i < 6; ++i) {
            all = `<article><a href="https://example.org/${i}"><h3>${i}</h3></a>${all}</article>`;
        }
        add(all);
    )"},
    {"HugeTitles", 6, R"(
        for (let i = 0; i < 6; ++i) {
            add(`<a href="https://example.org/${i}"><h3>${'Title '.repeat(35000)}</h3></a>`);
        }
    )"},
    {"TitlesThatAlmostStandInTheirBoxes", 6, R"(
        const almost = 'ab'.repeat(499) + 'ba';
        for (let i = 0; i < 6; ++i) add(`<article><div>${'ab'.repeat(48000)}</div>
            <a href="https://example.org/${i}"><h3>${almost}</h3></a></article>`);
    )"},
    {"LinksDeepDown", 6, R"(
        let inner = search;
        for (let i = 0; i < 10000; ++i) {
            inner = inner.appendChild(document.createElement('div'));
        }
        for (let i = 0; i < 6; ++i) {
            inner.insertAdjacentHTML('beforeend', `<a href="https://example.org/${i}"><h3>${i}</h3>
                </a>`);
        }
    )"},
    {"HeadsDeepBelowOneLink", 0, R"(
        let inner = search.appendChild(document.createElement('a'));
        inner.href = 'https://www.google.com/';
        for (let i = 0; i < 10000; ++i) {
            inner = inner.appendChild(document.createElement('div'));
        }
        inner.innerHTML = '<h3>Back</h3>'.repeat(1000);
    )"},
    {"LinksToDataOfMegabytes", 0, R"(
        for (let i = 0; i < 20; ++i) {
            add(`<a href="data:text/html,${i}${'a'.repeat(1000000)}"><h3>Data</h3></a>`);
        }
    )"},
    {"LinksBelowAHugeBase", 0, R"(
        const base = document.head.appendChild(document.createElement('base'));
        base.href = 'https://www.google.com/' + 'a'.repeat(20000) + '/';
        for (let i = 0; i < 2000; ++i) add(`<a href="${i}"><h3>Relative</h3></a>`);
    )"},
    {"HeadsBehindManyElementsOfALinkOutside", 0, R"(
        document.body.innerHTML = '<a href="https://www.google.com/">' + '<i></i>'.repeat(20000) +
            '<h3>Back</h3>'.repeat(2000) + '</a>';
    )"},
};

class ResultsCostTest : public EngineTest, public testing::WithParamInterface<CostlyPage> {
protected:
    std::unique_ptr<WebConfiguration> configuration =
        engine.makeConfiguration(WebsiteDataStore::nonPersistentDataStore());
    std::unique_ptr<WebView> view = configuration->makeWebView();
    RecordingDelegate delegate{*view};
};

TEST_P(ResultsCostTest, IsReadInNoTime) {
    server.serve("/page",
                 "<!doctype html><meta charset=utf-8><body><div id=search></div><script>"
                 "const add = html => search.insertAdjacentHTML('beforeend', html);" +
                     std::string{GetParam().script} + "</script>");
    loadAndWait(*view, delegate, "/page");

    const auto answer = evaluate(*view, R"((() => {
        document.documentElement.offsetHeight;
        const begun = performance.now();
        const results = )" + std::string{ResultsPage::script} +
                                            R"(;
        return [results, performance.now() - begun];
    })())");

    const auto document = JsonDocument::parse(answer.text);
    ASSERT_TRUE(document) << answer.text.substr(0, 1000);
    const auto pair = document->root().array().value();
    const double milliseconds = pair.at(1).number().value();
    RecordProperty("milliseconds", std::to_string(milliseconds));
    EXPECT_EQ(pair.at(0).array()->size(), GetParam().results);
    EXPECT_LT(milliseconds, 2000);
}

INSTANTIATE_TEST_SUITE_P(Pages, ResultsCostTest, testing::ValuesIn(pages),
                         [](const auto& each) { return std::string{each.param.name}; });

}  // namespace
}  // namespace orvu
