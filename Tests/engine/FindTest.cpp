#include "engine/EngineWorld.h"

namespace orvu {
namespace {

class FindTest : public EngineTest {
protected:
    FindTest() {
        server.serve("/page",
                     "<title>Page</title><p>One fish</p><p>two FISH</p><p>red herring</p>");
        server.serve("/empty", "<title>Empty</title>");
    }

    [[nodiscard]] bool find(const std::string& text, FindConfiguration how = {}) {
        const auto ask = [](Future<bool> answer) -> Task<bool> { co_return co_await answer; };
        auto task = ask(view->find(text, how));
        task.start();
        EXPECT_TRUE(waitFor([&] { return task.isDone(); })) << text;
        return task.isDone() && task.result();
    }
    /// The number of the paragraph with the match that stands out, from 0; -1 for none.
    [[nodiscard]] std::string matched() {
        return evaluate(*view,
                        "(s => s.rangeCount ? [...document.querySelectorAll('p')]"
                        ".indexOf(s.getRangeAt(0).startContainer.parentElement) : -1)"
                        "(getSelection())")
            .text;
    }

    std::unique_ptr<WebConfiguration> configuration =
        engine.makeConfiguration(WebsiteDataStore::nonPersistentDataStore());
    std::unique_ptr<WebView> view = configuration->makeWebView();
    RecordingDelegate delegate{*view};
    static constexpr FindConfiguration backwards{.backwards = true, .wraps = true};
};

TEST_F(FindTest, FindsWhateverTheCaseAndGoesRoundInBothDirections) {
    loadAndWait(*view, delegate, "/page");

    EXPECT_TRUE(find("fish"));
    EXPECT_EQ(matched(), "0");
    EXPECT_TRUE(find("fish"));
    EXPECT_EQ(matched(), "1");
    EXPECT_TRUE(find("fish"));
    EXPECT_EQ(matched(), "0");
    EXPECT_TRUE(find("fish", backwards));
    EXPECT_EQ(matched(), "1");
}

TEST_F(FindTest, WithoutWrappingItEndsAtTheLastMatch) {
    loadAndWait(*view, delegate, "/page");

    EXPECT_TRUE(find("herring", {.wraps = false}));
    EXPECT_FALSE(find("herring", {.wraps = false}));
}

TEST_F(FindTest, ALongerTextStaysAtTheMatchWhereItWas) {
    loadAndWait(*view, delegate, "/page");

    EXPECT_TRUE(find("two"));
    EXPECT_TRUE(find("two f"));

    EXPECT_EQ(matched(), "1");
}

TEST_F(FindTest, SaysThatThereIsNone) {
    loadAndWait(*view, delegate, "/page");

    EXPECT_FALSE(find("whale"));
    EXPECT_TRUE(find("red"));
}

TEST_F(FindTest, NothingIsFoundInAPageWithoutTextOrInAViewWithoutAPage) {
    EXPECT_FALSE(find("fish"));
    EXPECT_FALSE(dynamic_cast<const OrvuWebView&>(*view).isMade());

    loadAndWait(*view, delegate, "/empty");
    EXPECT_FALSE(find("fish"));
}

TEST_F(FindTest, TheAnswersOfManySearchesComeToTheirOwn) {
    loadAndWait(*view, delegate, "/page");
    const auto ask = [](Future<bool> answer) -> Task<bool> { co_return co_await answer; };
    std::vector<Task<bool>> tasks;

    for (const char* const text : {"f", "fi", "fix", "fis", "fish", "whale", "red"}) {
        tasks.push_back(ask(view->find(text, {})));
        tasks.back().start();
    }

    ASSERT_TRUE(waitFor([&] { return std::ranges::all_of(tasks, &Task<bool>::isDone); }));
    std::vector<bool> found;
    for (const auto& task : tasks) found.push_back(task.result());
    EXPECT_EQ(found, (std::vector{true, true, false, true, true, false, true}));
}

TEST_F(FindTest, AfterAnotherPageCameAnswersComeToTheirOwnAgain) {
    loadAndWait(*view, delegate, "/page");
    const auto dropped = view->find("fish", {});

    loadAndWait(*view, delegate, "/empty");

    EXPECT_FALSE(find("fish"));
    loadAndWait(*view, delegate, "/page");
    EXPECT_TRUE(find("fish"));
}

TEST_F(FindTest, AViewThatGoesDuringASearchGivesNoAnswer) {
    auto brief = configuration->makeWebView();
    const auto ask = [](Future<bool> answer) -> Task<bool> { co_return co_await answer; };
    {
        RecordingDelegate briefDelegate{*brief};
        loadAndWait(*brief, briefDelegate, "/page");
    }
    auto task = ask(brief->find("fish", {}));
    task.start();

    brief.reset();
    settle();

    EXPECT_FALSE(task.isDone());
}

}  // namespace
}  // namespace orvu
