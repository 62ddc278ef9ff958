#include "shell/TabCloser.h"

#include "support/StoreWorld.h"

#include <memory>
#include <utility>

namespace orvu {
namespace {

class TabCloserTest : public StoreTest {
protected:
    /// Opens a window with these pages; those of `asking` want to ask before they go.
    void open(const Strings& pages, const Strings& asking = {}) {
        store = openStoreWith(pages);
        for (const auto& text : asking) pageAt(text).asksBeforeClosing = true;
    }
    [[nodiscard]] FakeWebView& pageAt(std::string_view address) {
        return page(*tabAt(*store, address));
    }
    void close(std::string_view address) { TabCloser{*store}.close(*tabAt(*store, address)); }
    void closeWindow() {
        TabCloser{*store}.whenAllMayGo([this] { ++presented; }, [this] { ++closed; });
    }
    [[nodiscard]] Strings tabs() const { return addresses(store->tabs()); }
    /// Lets what has waited go on.
    void goOn() { world.loop.advance(std::chrono::milliseconds{0}); }

    static inline const PageDialogAnswer leave{.isAccepted = true};
    static inline const PageDialogAnswer stay{};
    std::unique_ptr<BrowserStore> store;
    int presented = 0;
    int closed = 0;
};

TEST_F(TabCloserTest, APageThatAsksNothingGoesBeforeTheCallReturns) {
    open({a, b});

    close(a);

    EXPECT_EQ(tabs(), Strings{b});
}

TEST_F(TabCloserTest, ATabWaitsForItsPage) {
    open({a, b}, {b});

    close(b);
    EXPECT_EQ(tabs(), (Strings{a, b}));
    pageAt(b).closings.back().resolve(true);
    goOn();

    EXPECT_EQ(tabs(), Strings{a});
}

TEST_F(TabCloserTest, APageThatIsToStayKeepsItsTab) {
    open({a, b}, {b});
    close(b);
    pageAt(b).askBeforeClosing();

    pageAt(b).answerDialog(stay);
    goOn();

    EXPECT_EQ(tabs(), (Strings{a, b}));
}

TEST_F(TabCloserTest, APageThatAsksComesToTheFrontAndOneThatDoesNotStaysBehind) {
    open({a, b, c}, {a, b});

    close(b);
    EXPECT_EQ(front(*store), c);
    pageAt(b).closings.back().resolve(true);
    close(a);
    pageAt(a).askBeforeClosing();

    EXPECT_EQ(front(*store), a);
}

TEST_F(TabCloserTest, AskedTwiceATabGoesOnce) {
    open({a, b, c}, {c});
    close(c);
    close(c);

    for (const auto& asked : std::vector(pageAt(c).closings.begin(), pageAt(c).closings.end())) {
        asked.resolve(true);
    }
    goOn();

    EXPECT_EQ(tabs(), (Strings{a, b}));
}

TEST_F(TabCloserTest, ATabThatGoesByItselfMeanwhileLeavesTheOthersAlone) {
    open({a, b, c}, {b});
    close(b);
    const auto asked = pageAt(b).closings.back();

    store->close(*tabAt(*store, b));
    asked.resolve(true);
    goOn();

    EXPECT_EQ(tabs(), (Strings{a, c}));
}

TEST_F(TabCloserTest, ATabOfAnotherWindowIsNotClosed) {
    open({a, b});
    const auto other = openPrivateStore();

    TabCloser{*store}.close(*other->active());
    TabCloser{*store}.park(*other->active());

    EXPECT_EQ(tabs(), (Strings{a, b}));
    EXPECT_EQ(other->tabs().size(), 1U);
}

TEST_F(TabCloserTest, AParkedPageIsAskedToo) {
    open({a, b}, {b});

    TabCloser{*store}.park(*tabAt(*store, b));
    EXPECT_TRUE(store->shelf().empty());
    pageAt(b).askBeforeClosing();
    pageAt(b).answerDialog(leave);
    goOn();

    EXPECT_EQ(addresses(store->shelf()), Strings{b});
    EXPECT_EQ(tabs(), Strings{a});
}

TEST_F(TabCloserTest, AGroupGoesWhenAllItsPagesAgree) {
    open({a, b, c}, {a, b});
    const auto group = store->newGroup(*tabAt(*store, a));
    store->moveToGroup(*tabAt(*store, b), *group);

    TabCloser{*store}.closeGroup(*group);
    pageAt(a).askBeforeClosing();
    pageAt(a).answerDialog(leave);
    EXPECT_EQ(tabs(), (Strings{a, b, c}));
    pageAt(b).closings.back().resolve(true);
    goOn();

    EXPECT_EQ(tabs(), Strings{c});
    EXPECT_TRUE(store->groups().empty());
}

TEST_F(TabCloserTest, OneThatStaysKeepsTheWholeGroup) {
    open({a, b}, {b});
    const auto group = store->newGroup(*tabAt(*store, a));
    store->moveToGroup(*tabAt(*store, b), *group);
    TabCloser{*store}.closeGroup(*group);
    pageAt(b).askBeforeClosing();

    pageAt(b).answerDialog(stay);
    goOn();

    EXPECT_EQ(tabs(), (Strings{a, b}));
    EXPECT_EQ(store->groups().size(), 1U);
}

TEST_F(TabCloserTest, AWindowClosesAtOnceWhereNoPageAsks) {
    open({a, b});

    closeWindow();

    EXPECT_EQ(closed, 1);
    EXPECT_EQ(presented, 0);
}

TEST_F(TabCloserTest, ThePagesOfAWindowAskOneAfterTheOtherAtTheFront) {
    open({a, b, c}, {a, c});
    closeWindow();
    pageAt(c).askBeforeClosing();
    EXPECT_EQ(presented, 0);
    pageAt(a).askBeforeClosing();
    EXPECT_EQ(front(*store), a);
    EXPECT_EQ(presented, 1);

    pageAt(a).answerDialog(leave);
    EXPECT_EQ(front(*store), c);
    EXPECT_EQ(presented, 2);
    EXPECT_EQ(closed, 0);
    pageAt(c).answerDialog(leave);
    goOn();

    EXPECT_EQ(closed, 1);
}

TEST_F(TabCloserTest, OneStayEndsTheClosingOfAWindowAndTakesTheOtherQuestionsBack) {
    open({a, b}, {a, b});
    closeWindow();
    bool isWanted = true;
    pageAt(b).closings.back().onAbandoned([&] { isWanted = false; });
    pageAt(a).askBeforeClosing();

    pageAt(a).answerDialog(stay);
    goOn();

    EXPECT_EQ(closed, 0);
    EXPECT_FALSE(isWanted);
    EXPECT_EQ(tabs(), (Strings{a, b}));
}

TEST_F(TabCloserTest, AWindowMayGoWhileItsPagesAreAsked) {
    open({a, b}, {a, b});
    closeWindow();
    pageAt(a).askBeforeClosing();

    store.reset();
    goOn();

    EXPECT_EQ(closed, 0);
}

TEST_F(TabCloserTest, WhoeverIsToldMayEndTheWindow) {
    open({a, b}, {a});
    TabCloser{*store}.whenAllMayGo([] {}, [this] { store.reset(); });

    pageAt(a).closings.back().resolve(true);
    goOn();

    EXPECT_EQ(store, nullptr);
}

TEST_F(TabCloserTest, WhoeverIsToldAtOnceMayEndTheWindow) {
    open({a, b});

    TabCloser{*store}.whenAllMayGo([] {}, [this] { store.reset(); });

    EXPECT_EQ(store, nullptr);
}

}  // namespace
}  // namespace orvu
