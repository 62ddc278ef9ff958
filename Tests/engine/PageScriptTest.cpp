#include "engine/EngineWorld.h"

namespace orvu {
namespace {

using Kind = ScriptResult::Kind;

class PageScriptTest : public EngineTest {
protected:
    PageScriptTest() {
        server.serve("/page",
                     "<title>Page</title><script>var secret = 1;"
                     "String.prototype.trim = () => 'patched'</script>");
    }
    [[nodiscard]] std::unique_ptr<WebConfiguration> makeConfiguration() {
        auto made = engine.makeConfiguration(WebsiteDataStore::nonPersistentDataStore());
        made->setElementFullscreenEnabled(true);
        return made;
    }
    void SetUp() override { loadAndWait(*view, delegate, "/page"); }

    std::unique_ptr<WebConfiguration> configuration = makeConfiguration();
    std::unique_ptr<WebView> view = configuration->makeWebView();
    RecordingDelegate delegate{*view};
};

TEST_F(PageScriptTest, AStringKeepsItsNulAndHalfCharactersBecomeReplacements) {
    const auto nul = evaluate(*view, "'a\\u0000b'");
    const auto half = evaluate(*view, "'x' + '😀'.slice(0, 1) + 'y'");

    EXPECT_EQ(nul.kind, Kind::text);
    EXPECT_EQ(nul.text, std::string("a\0b", 3));
    EXPECT_EQ(half.kind, Kind::text);
    EXPECT_EQ(half.text, "x\uFFFDy");
}

TEST_F(PageScriptTest, ThePagesOwnVariablesAndPatchesAreNotSeen) {
    EXPECT_EQ(evaluate(*view, "typeof secret").text, "undefined");
    EXPECT_EQ(evaluate(*view, "' a '.trim()").text, "a");
    EXPECT_EQ(evaluate(*view, "document.title").text, "Page");
}

TEST_F(PageScriptTest, OtherValuesComeAsJson) {
    const auto list = evaluate(*view, "[1, 'two', {three: null}]");

    EXPECT_EQ(list.kind, Kind::json);
    EXPECT_EQ(list.text, R"([1,"two",{"three":null}])");
    EXPECT_EQ(evaluate(*view, "2.5").text, "2.5");
    EXPECT_EQ(evaluate(*view, "undefined").kind, Kind::undefined);
}

TEST_F(PageScriptTest, HalfCharactersInJsonBecomeReplacements) {
    const auto list = evaluate(*view, "['😀'.slice(0, 1), '😀']");

    EXPECT_EQ(list.kind, Kind::json);
    EXPECT_EQ(list.text, R"(["\ufffd","😀"])");
}

TEST_F(PageScriptTest, ExceptionsAndBrokenScriptsFail) {
    EXPECT_EQ(evaluate(*view, "throw new Error('no')").kind, Kind::failed);
    EXPECT_EQ(evaluate(*view, "this is no script").kind, Kind::failed);
    EXPECT_EQ(evaluate(*view, "document.body").kind, Kind::failed);
}

TEST_F(PageScriptTest, AnAnswerIsDroppedWithTheTaskThatWantedIt) {
    const auto ask = [](WebView& page) -> Task<ScriptResult> {
        co_return co_await page.evaluateJavaScript("1 + 1");
    };
    {
        auto task = ask(*view);
        task.start();
        EXPECT_FALSE(task.isDone());
    }

    EXPECT_EQ(evaluate(*view, "3").text, "3");
}

TEST_F(PageScriptTest, AViewMayGoWhileItIsAsked) {
    auto leaving = configuration->makeWebView();
    const auto ask = [](WebView& page) -> Task<ScriptResult> {
        co_return co_await page.evaluateJavaScript("'late'");
    };
    auto task = ask(*leaving);
    task.start();

    leaving.reset();
    settle();

    EXPECT_EQ(evaluate(*view, "'here'").text, "here");
}

TEST_F(PageScriptTest, PagesSeeTheLightSchemeAlsoInPrivateWindows) {
    EXPECT_EQ(evaluate(*view, "matchMedia('(prefers-color-scheme: dark)').matches").text, "false");
}

TEST_F(PageScriptTest, AnElementTakesTheWholeScreenAndGivesItBack) {
    GtkWidget* const window = gtk_window_new();
    GtkWidget* const box = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 0);
    gtk_window_set_child(GTK_WINDOW(window), box);
    auto& page = static_cast<OrvuWebView&>(*view);
    gtk_box_append(GTK_BOX(box), page.widget());
    gtk_window_set_default_size(GTK_WINDOW(window), 600, 400);
    gtk_window_present(GTK_WINDOW(window));
    std::vector<bool> heard;
    page.connectFullscreen([&](bool on) { heard.push_back(on); });

    ASSERT_TRUE(
        waitFor([&] { return evaluate(*view, "document.visibilityState").text == "visible"; }));
    static_cast<void>(evaluate(*view, "document.documentElement.requestFullscreen(); 1"));
    ASSERT_TRUE(waitFor([&] { return heard.size() == 1; }));
    static_cast<void>(evaluate(*view, "document.exitFullscreen(); 1"));
    ASSERT_TRUE(waitFor([&] { return heard.size() == 2; }));

    EXPECT_EQ(heard, (std::vector<bool>{true, false}));
    gtk_window_destroy(GTK_WINDOW(window));
}

}  // namespace
}  // namespace orvu
