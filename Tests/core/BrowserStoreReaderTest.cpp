#include "support/StoreWorld.h"

#include <chrono>

namespace orvu {
namespace {

class BrowserStoreReaderTest : public StoreTest {
protected:
    /// The page of a tab answers the last question with an article of this title.
    void answer(BrowserTab& tab, const std::string& title) {
        resolve(tab, {ScriptResult::Kind::json, articleJson(title)});
    }
    /// The page of a tab says that there is no article.
    void refuse(BrowserTab& tab) { resolve(tab, {ScriptResult::Kind::json, "null"}); }
    void resolve(BrowserTab& tab, const ScriptResult& result) {
        page(tab).answers.back().resolve(result);
        world.loop.advance(std::chrono::milliseconds{0});
    }
    static std::string articleJson(const std::string& title) {
        return R"({"title":")" + title + R"(","blocks":[["p","Text"]]})";
    }
    /// The reader of the tab in front shows an article of this title.
    void read(BrowserStore& store, const std::string& title) {
        store.toggleReader();
        answer(*store.active(), title);
    }
    /// The title of the article in a tab's place; empty if its page is shown.
    static std::string shown(const BrowserStore& store, const BrowserTab& tab) {
        const auto article = store.readerArticle(tab);
        return article ? article->title : "";
    }
    static std::string shown(const BrowserStore& store) { return shown(store, *store.active()); }
};

TEST_F(BrowserStoreReaderTest, ArticleOfTheActiveTabIsShownWithOneSignal) {
    const auto store = openStoreWith({a, b});
    const ChangeCounter changes{*store};

    read(*store, "Story");

    EXPECT_EQ(shown(*store), "Story");
    EXPECT_EQ(store->readerArticle(*store->active())->url, url(b));
    EXPECT_EQ(store->reader()->tab, store->active()->id());
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(world.sound.beeps, 0);
    EXPECT_EQ(shown(*store, *tabAt(*store, a)), "");
}

TEST_F(BrowserStoreReaderTest, SecondPressEndsTheReaderWithOneSignal) {
    const auto store = openStoreWith({a});
    read(*store, "Story");
    const ChangeCounter changes{*store};

    store->toggleReader();

    EXPECT_EQ(shown(*store), "");
    EXPECT_FALSE(store->reader());
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(BrowserStoreReaderTest, EmptyTabIsNotRead) {
    const auto store = openStore();

    store->toggleReader();

    EXPECT_TRUE(page(*store->active()).scripts.empty());
    EXPECT_EQ(world.sound.beeps, 0);
}

TEST_F(BrowserStoreReaderTest, PageWithoutAnArticleBeepsAndLeavesWhatStands) {
    const auto store = openStoreWith({a, b});
    read(*store, "Of b");
    store->select(*tabAt(*store, a));
    const ChangeCounter changes{*store};

    store->toggleReader();
    refuse(*store->active());

    EXPECT_EQ(world.sound.beeps, 1);
    EXPECT_EQ(changes.count(), 0);
    EXPECT_EQ(shown(*store, *tabAt(*store, b)), "Of b");
}

TEST_F(BrowserStoreReaderTest, EveryFailureOfThePageBeeps) {
    const auto store = openStoreWith({a});
    using Kind = ScriptResult::Kind;
    const std::vector<ScriptResult> failures{{Kind::failed, ""},
                                             {Kind::undefined, ""},
                                             {Kind::text, articleJson("T")},
                                             {Kind::json, "[]"},
                                             {Kind::json, R"({"title":"T"})"}};

    for (const auto& failure : failures) {
        store->toggleReader();
        resolve(*store->active(), failure);
    }

    EXPECT_EQ(world.sound.beeps, 5);
    EXPECT_FALSE(store->reader());
}

TEST_F(BrowserStoreReaderTest, ArticleOfAnotherTabIsReplaced) {
    const auto store = openStoreWith({a, b});
    read(*store, "Of b");
    store->select(*tabAt(*store, a));

    read(*store, "Of a");

    EXPECT_EQ(shown(*store, *tabAt(*store, a)), "Of a");
    EXPECT_EQ(shown(*store, *tabAt(*store, b)), "");
}

TEST_F(BrowserStoreReaderTest, NavigationBringsThePageBackAndTheOldAddressTheArticle) {
    const auto store = openStoreWith({a});
    read(*store, "Story");

    page(*store->active()).setUrl(url(b));
    EXPECT_EQ(shown(*store), "");
    EXPECT_TRUE(store->reader());
    page(*store->active()).setUrl(url(a));

    EXPECT_EQ(shown(*store), "Story");
}

TEST_F(BrowserStoreReaderTest, PressAfterANavigationForgetsTheArticleAndReadsNothing) {
    const auto store = openStoreWith({a});
    read(*store, "Story");
    page(*store->active()).setUrl(url(b));

    store->toggleReader();

    EXPECT_FALSE(store->reader());
    EXPECT_EQ(page(*store->active()).scripts.size(), 1U);
}

TEST_F(BrowserStoreReaderTest, OfTwoQuickPressesTheLaterAnswerCounts) {
    const auto store = openStoreWith({a});
    auto& view = page(*store->active());
    store->toggleReader();
    store->toggleReader();
    ASSERT_EQ(view.answers.size(), 2U);

    view.answers[1].resolve({ScriptResult::Kind::json, articleJson("Second question")});
    world.loop.advance(std::chrono::milliseconds{0});
    EXPECT_EQ(shown(*store), "Second question");
    view.answers[0].resolve({ScriptResult::Kind::json, articleJson("First question")});
    world.loop.advance(std::chrono::milliseconds{0});

    EXPECT_EQ(shown(*store), "First question");
}

TEST_F(BrowserStoreReaderTest, TwoAnswersInOneTurnShowTheLaterOne) {
    const auto store = openStoreWith({a});
    auto& view = page(*store->active());
    store->toggleReader();
    store->toggleReader();

    view.answers[0].resolve({ScriptResult::Kind::json, articleJson("First")});
    view.answers[1].resolve({ScriptResult::Kind::json, articleJson("Second")});
    world.loop.advance(std::chrono::milliseconds{0});

    EXPECT_EQ(shown(*store), "Second");
}

TEST_F(BrowserStoreReaderTest, AnswerForATabThatIsNoLongerInFrontIsShownThere) {
    const auto store = openStoreWith({a, b});
    const auto asked = store->active();
    store->toggleReader();
    store->select(*tabAt(*store, a));

    answer(*asked, "Of b");

    EXPECT_EQ(shown(*store), "");
    EXPECT_EQ(shown(*store, *asked), "Of b");
}

TEST_F(BrowserStoreReaderTest, AnswerThatComesAfterANavigationStaysHiddenUntilTheWayBack) {
    const auto store = openStoreWith({"https://www.a.example/"});
    store->toggleReader();
    page(*store->active()).setUrl(url(b));

    answer(*store->active(), "Of a");

    EXPECT_EQ(shown(*store), "");
    EXPECT_EQ(store->reader()->article->url, url("https://www.a.example/"));
    EXPECT_EQ(store->reader()->article->site, "b.example");
}

TEST_F(BrowserStoreReaderTest, TabMayCloseBeforeItsPageAnswers) {
    const auto store = openStoreWith({a, b});
    store->toggleReader();
    const auto promise = page(*store->active()).answers.back();

    store->close(*store->active());
    promise.resolve({ScriptResult::Kind::json, articleJson("Late")});
    world.loop.advance(std::chrono::milliseconds{0});

    EXPECT_FALSE(store->reader());
}

TEST_F(BrowserStoreReaderTest, StoreMayGoBeforeThePageAnswers) {
    auto store = openStoreWith({a});
    store->toggleReader();
    const auto promise = page(*store->active()).answers.back();

    store.reset();
    promise.resolve({ScriptResult::Kind::json, articleJson("Late")});
    world.loop.advance(std::chrono::milliseconds{0});

    EXPECT_EQ(world.sound.beeps, 0);
}

TEST_F(BrowserStoreReaderTest, StoreMayGoBetweenTheAnswerAndItsShowing) {
    auto store = openStoreWith({a});
    store->toggleReader();
    page(*store->active()).answers.back().resolve({ScriptResult::Kind::json, articleJson("T")});

    store.reset();
    world.loop.advance(std::chrono::milliseconds{0});

    EXPECT_EQ(world.loop.pendingTimers(), 0U);
}

TEST_F(BrowserStoreReaderTest, ObserverMayEndTheStore) {
    auto store = openStoreWith({a});
    store->toggleReader();
    store->connectChanged([&] { store.reset(); });

    answer(*store->active(), "Story");

    EXPECT_FALSE(store);
    EXPECT_EQ(world.sound.beeps, 0);
}

TEST_F(BrowserStoreReaderTest, ClosedTabsArticleStaysButShowsNowhere) {
    const auto store = openStoreWith({a, b});
    read(*store, "Of b");

    store->close(*store->active());

    EXPECT_TRUE(store->reader());
    EXPECT_EQ(shown(*store), "");
}

TEST_F(BrowserStoreReaderTest, ReaderIsNotSaved) {
    const auto store = openStoreWith({a});
    world.defaults.written.clear();

    read(*store, "Story");
    store->toggleReader();

    EXPECT_TRUE(world.defaults.written.empty());
}

TEST_F(BrowserStoreReaderTest, PrivateWindowReadsAsWell) {
    const auto store = openPrivateStore();
    store->open("a.example", NewTab::no);

    read(*store, "Story");

    EXPECT_EQ(shown(*store), "Story");
    EXPECT_TRUE(world.defaults.written.empty());
}

TEST_F(BrowserStoreReaderTest, TabWithoutAnAddressHasNoArticle) {
    const auto store = openStore();

    auto task = store->active()->readerArticle();
    task.start();

    ASSERT_TRUE(task.isDone());
    EXPECT_FALSE(task.result());
    EXPECT_TRUE(page(*store->active()).scripts.empty());
}

TEST_F(BrowserStoreReaderTest, ArticleWithoutATitleOfItsOwnHasTheTabsTitle) {
    const auto store = openStoreWith({"https://www.a.www.example/"});
    page(*store->active()).setTitle("Page");
    store->toggleReader();

    resolve(*store->active(), {ScriptResult::Kind::json, R"({"blocks":[]})"});

    EXPECT_EQ(shown(*store), "Page");
    EXPECT_EQ(store->reader()->article->site, "a.example");
}

}  // namespace
}  // namespace orvu
