#include "engine/EngineWorld.h"

#include <csignal>

namespace orvu {
namespace {

using Kind = PageDialog::Kind;
using Answer = LoopbackServer::Answer;

constexpr PageDialogAnswer cancelled{};

/// Writes down in the body what comes of an expression.
std::string saying(const std::string& expression) {
    return "<title>Page</title><body data-log=''><script>const say = text => "
           "document.body.dataset.log += text + ' ';\n" +
           expression + "</script>";
}

class DialogsTest : public EngineTest {
protected:
    DialogsTest() {
        gtk_window_set_child(window, static_cast<OrvuWebView&>(*view).widget());
        gtk_window_present(window);
    }
    ~DialogsTest() override {
        if (view) gtk_window_set_child(window, nullptr);
        gtk_window_destroy(window);
    }

    [[nodiscard]] PageDialogs& dialogs() const { return view->dialogs(); }
    [[nodiscard]] const PageDialog* asked() const {
        return dialogs().current() ? &dialogs().current()->dialog : nullptr;
    }
    [[nodiscard]] const PageDialog& expectDialog(Kind kind) const {
        EXPECT_TRUE(waitFor([&] { return asked() && asked()->kind == kind; }))
            << static_cast<int>(kind) << (view->isLoading() ? " while loading " : " at rest on ")
            << (view->url() ? view->url()->absoluteString() : "nothing");
        static const PageDialog none;
        return asked() ? *asked() : none;
    }
    void answer(const PageDialogAnswer& given) const {
        if (dialogs().current()) dialogs().answer(dialogs().current()->id, given);
    }
    static PageDialogAnswer yes(const std::string& text = "", const std::string& password = "") {
        return {.isAccepted = true, .text = text, .password = password};
    }
    void open(const std::string& path, const std::string& host = "127.0.0.1") {
        const auto before = delegate.finishedTitles.size();
        view->load(url(path, host));
        ASSERT_TRUE(waitFor([&] { return delegate.finishedTitles.size() > before; })) << path;
    }
    [[nodiscard]] std::string log() const {
        return evaluate(*view, "document.body.dataset.log").text;
    }
    void expectLog(const std::string& wanted) const {
        EXPECT_TRUE(waitFor([&] { return log() == wanted; })) << log();
    }

    GtkWindow* const window = GTK_WINDOW(gtk_window_new());
    std::unique_ptr<WebConfiguration> configuration =
        engine.makeConfiguration(WebsiteDataStore::nonPersistentDataStore());
    std::unique_ptr<WebView> view = configuration->makeWebView();
    RecordingDelegate delegate{*view};
};

TEST_F(DialogsTest, AnAlertHoldsItsPageUpUntilItIsAnswered) {
    server.serve("/page", saying("alert('Hello'); say('after');"));
    view->load(url("/page"));

    const auto& dialog = expectDialog(Kind::alert);
    EXPECT_EQ(dialog.host, "127.0.0.1");
    EXPECT_EQ(dialog.text, "Hello");
    answer(yes());

    expectLog("after ");
}

TEST_F(DialogsTest, ThePageHearsWhatThePersonSays) {
    server.serve("/page", saying("say(confirm('1')); say(confirm('2')); say(prompt('3', 'old'));"
                                 "say(prompt('4')); say(prompt('5', 'x') === '');"));
    view->load(url("/page"));
    const std::vector<std::pair<Kind, PageDialogAnswer>> said{{Kind::confirm, yes()},
                                                              {Kind::confirm, cancelled},
                                                              {Kind::prompt, yes("new")},
                                                              {Kind::prompt, cancelled},
                                                              {Kind::prompt, yes("")}};

    for (std::size_t i = 0; i < said.size(); ++i) {
        ASSERT_TRUE(waitFor([&] { return asked() && asked()->text == std::to_string(i + 1); }));
        EXPECT_EQ(asked()->kind, said[i].first);
        if (i == 2) {
            EXPECT_EQ(asked()->suggestion, "old");
        }
        answer(said[i].second);
    }

    expectLog("true false new null true ");
}

TEST_F(DialogsTest, AFrameOfAnotherSiteAsksInTheNameOfThePage) {
    server.serve("/frame", "<script>alert('framed')</script>");
    server.serve("/page", "<title>Page</title><iframe src='" + server.url("/frame", "localhost") +
                              "'></iframe>");
    view->load(url("/page"));

    EXPECT_EQ(expectDialog(Kind::alert).host, "127.0.0.1");
}

TEST_F(DialogsTest, AnAddressThatIsStillLoadingDoesNotLendItsName) {
    server.serve("/slow", Answer{.held = true});
    server.serve("/page",
                 saying("setTimeout(() => { location.href = '" + server.url("/slow", "localhost") +
                        "'; setTimeout(() => alert('late'), 300); }, 100);"));
    open("/page");
    ASSERT_TRUE(waitFor([&] { return server.requests("/slow") == 1; }));

    EXPECT_EQ(expectDialog(Kind::alert).host, "127.0.0.1");
}

TEST_F(DialogsTest, APageThatThePersonIsLeavingHoldsNothingUp) {
    server.serve("/slow", Answer{.held = true});
    server.serve("/page", saying("addEventListener('go', () => { alert('wait'); say('on'); });"));
    open("/page");
    view->load(url("/slow"));

    static_cast<void>(evaluate(*view, "dispatchEvent(new Event('go')); 0"));

    expectLog("on ");
    view->stopLoading();
    EXPECT_TRUE(waitFor([&] { return !view->isLoading(); }));
    static_cast<void>(evaluate(*view, "setTimeout(() => dispatchEvent(new Event('go')), 0); 0"));
    static_cast<void>(expectDialog(Kind::alert));
}

TEST_F(DialogsTest, ALongTextIsCut) {
    server.serve("/page", saying("alert('x'.repeat(2000000));"));
    view->load(url("/page"));

    EXPECT_LE(expectDialog(Kind::alert).text.size(),
              PageDialogs::textLimit + 3 + PageDialogs::textLimit / 60 + 1);
}

TEST_F(DialogsTest, AnotherLoadEndsTheDialogsOfThePage) {
    server.serve("/page", saying("for (let i = 0; i < 9; ++i) alert('again');"));
    server.serve("/next", saying(""));
    view->load(url("/page"));
    static_cast<void>(expectDialog(Kind::alert));

    open("/next", "localhost");

    EXPECT_EQ(asked(), nullptr);
}

TEST_F(DialogsTest, APageProcessThatEndsEndsItsDialogs) {
    server.serve("/page", saying("alert('Hello');"));
    view->load(url("/page"));
    static_cast<void>(expectDialog(Kind::alert));

    for (const int process : pageProcesses()) kill(process, SIGKILL);

    EXPECT_TRUE(waitFor([&] { return !asked(); }));
}

TEST_F(DialogsTest, AViewMayGoWithItsDialog) {
    server.serve("/page", saying("alert('Hello');"));
    auto other = configuration->makeWebView();
    gtk_window_set_child(window, static_cast<OrvuWebView&>(*other).widget());
    other->load(url("/page"));
    EXPECT_TRUE(waitFor([&] { return other->dialogs().current() != nullptr; }));

    gtk_window_set_child(window, nullptr);
    other.reset();
    settle();
}

TEST_F(DialogsTest, APageThatGoesAsksNothingMore) {
    server.serve("/page", saying("for (const name of ['beforeunload', 'pagehide', 'unload'])"
                                 "addEventListener(name, () => alert(name));"));
    server.serve("/next", saying(""));
    open("/page");

    open("/next");

    EXPECT_EQ(asked(), nullptr);
}

TEST_F(DialogsTest, TheLoopGoesOnWhileASilencedPageAsksAThousandTimes) {
    server.serve("/page", saying("for (let i = 0; i < 1000; ++i) alert(i); say('done');"));
    view->load(url("/page"));
    static_cast<void>(expectDialog(Kind::alert));
    int turns = 0;
    const guint ticker = g_timeout_add(
        5,
        [](gpointer data) -> gboolean {
            ++*static_cast<int*>(data);
            return TRUE;
        },
        &turns);

    dialogs().silence();

    EXPECT_TRUE(waitFor([&] { return turns >= 10; }));
    g_source_remove(ticker);
    expectLog("done ");
    EXPECT_EQ(asked(), nullptr);
}

// --- Passwords ----------------------------------------------------------------------------------

class SignInTest : public DialogsTest {
protected:
    static Answer locked(const std::string& realm = "Staff") {
        return {.body = "<title>Locked</title>no",
                .status = 401,
                .headers = {{"WWW-Authenticate", "Basic realm=\"" + realm + "\""}}};
    }
};

TEST_F(SignInTest, ThePersonSignsInToTheServerThatAsks) {
    server.serve("/page", saying(""));
    server.serve("/locked", locked());
    open("/page");
    view->load(url("/locked", "localhost"));

    const auto& dialog = expectDialog(Kind::authentication);
    EXPECT_EQ(dialog.host, "localhost");
    EXPECT_EQ(dialog.text, "Staff");
    EXPECT_FALSE(dialog.isEncrypted);
    EXPECT_FALSE(dialog.isRetry);
    server.serve("/locked", "<title>In</title>");
    answer(yes("me", "secret"));

    ASSERT_TRUE(waitFor([&] { return view->title() == "In"; }));
    EXPECT_EQ(server.header("/locked", "Authorization"), "Basic bWU6c2VjcmV0");
}

TEST_F(SignInTest, ThePersonIsAskedAlsoWhereThePageThatIsLeftAskedSomething) {
    server.serve("/page", saying("setTimeout(() => prompt('Name?'), 10);"));
    server.serve("/locked", locked());
    for (int round = 0; round < 8; ++round) {
        view->load(url("/page"));
        static_cast<void>(expectDialog(Kind::prompt));
        view->load(url("/locked"));
        static_cast<void>(expectDialog(Kind::authentication));
        const auto before = delegate.finishedTitles.size();
        answer(cancelled);
        ASSERT_TRUE(waitFor([&] { return delegate.finishedTitles.size() > before; }));
    }
}

TEST_F(SignInTest, AWrongPasswordIsAskedForAgain) {
    server.serve("/locked", locked());
    view->load(url("/locked"));
    static_cast<void>(expectDialog(Kind::authentication));

    answer(yes("me", "wrong"));

    ASSERT_TRUE(waitFor([&] { return asked() && asked()->isRetry; }));
}

TEST_F(SignInTest, WhoCancelsSeesWhatTheServerShowsOthers) {
    server.serve("/locked", locked());
    view->load(url("/locked"));
    static_cast<void>(expectDialog(Kind::authentication));

    answer(cancelled);

    EXPECT_TRUE(waitFor([&] { return view->title() == "Locked"; }));
    EXPECT_EQ(asked(), nullptr);
}

TEST_F(SignInTest, AFrameOfAnotherHostAsksInThatHostsName) {
    server.serve("/frame", locked("Frames"));
    server.serve("/page", "<title>Page</title><iframe src='" + server.url("/frame", "localhost") +
                              "'></iframe>");
    view->load(url("/page"));

    const auto& dialog = expectDialog(Kind::authentication);

    EXPECT_EQ(dialog.host, "localhost");
    EXPECT_EQ(dialog.text, "Frames");
}

/// The engine lets nobody ask through another host's picture.
TEST_F(SignInTest, APictureOfAnotherHostAsksNothing) {
    server.serve("/picture", locked("Pictures"));
    server.serve("/page",
                 "<title>Page</title><img src='" + server.url("/picture", "localhost") + "'>");

    open("/page");

    EXPECT_EQ(server.requests("/picture"), 1);
    EXPECT_EQ(asked(), nullptr);
}

TEST_F(SignInTest, TheNextPageBehindTheSamePasswordOpensWithoutAQuestion) {
    server.serve("/one", locked());
    view->load(url("/one"));
    static_cast<void>(expectDialog(Kind::authentication));
    server.serve("/one", "<title>One</title>");
    answer(yes("me", "secret"));
    ASSERT_TRUE(waitFor([&] { return view->title() == "One"; }));

    server.serve("/two", "<title>Two</title>");
    view->load(url("/two"));

    ASSERT_TRUE(waitFor([&] { return view->title() == "Two"; }));
    EXPECT_EQ(asked(), nullptr);
}

TEST_F(SignInTest, AnotherLoadTakesTheQuestionBack) {
    server.serve("/locked", locked());
    server.serve("/page", saying(""));
    view->load(url("/locked"));
    static_cast<void>(expectDialog(Kind::authentication));

    open("/page");

    EXPECT_EQ(asked(), nullptr);
}

TEST_F(SignInTest, TheNextPageMayAskAlsoAfterASilencedOne) {
    server.serve("/page", saying(""));
    server.serve("/locked", locked());
    open("/page");
    dialogs().silence();

    view->load(url("/locked"));

    static_cast<void>(expectDialog(Kind::authentication));
}

// --- Leaving ------------------------------------------------------------------------------------

class LeavingTest : public DialogsTest {
protected:
    LeavingTest() {
        server.serve("/plain", saying("onkeydown = () => say('key');"));
        server.serve("/form", saying("onbeforeunload = event => { event.preventDefault(); };"
                                     "onkeydown = () => say('key');"));
        server.serve("/next", "<title>Next</title>");
    }
    /// Loads a page and does something in it.
    void touch(const std::string& path) {
        open(path);
        auto* const widget = static_cast<OrvuWebView&>(*view).widget();
        // A key that comes before the window has the keyboard is lost.
        ASSERT_TRUE(waitFor([&] { return gtk_window_is_active(window) != FALSE; }));
        gtk_widget_grab_focus(widget);
        // One that comes before the page listens is lost too.
        EXPECT_TRUE(waitFor([this] {
            g_spawn_command_line_sync("xdotool key a", nullptr, nullptr, nullptr, nullptr);
            return !log().empty();
        }));
    }
    void expectStands(const std::string& path, const std::string& host = "127.0.0.1") {
        EXPECT_TRUE(waitFor([&] { return view->url() == url(path, host) && !view->isLoading(); }))
            << (view->url() ? view->url()->absoluteString() : "") << view->isLoading();
        EXPECT_EQ(asked(), nullptr);
    }
    /// What a future brings; nothing as long as it waits.
    struct Waiting {
        std::optional<bool> value;
        Task<void> task;
    };
    [[nodiscard]] std::unique_ptr<Waiting> mayClose() const {
        auto waiting = std::make_unique<Waiting>();
        const auto wait = [](Waiting& into, Future<bool> answer) -> Task<void> {
            into.value = co_await answer;
        };
        waiting->task = wait(*waiting, view->mayClose());
        waiting->task.start();
        return waiting;
    }
};

TEST_F(LeavingTest, AViewWithoutAPageMayCloseAtOnce) {
    EXPECT_EQ(mayClose()->value, true);
    EXPECT_EQ(configuration->makeWebView()->mayClose().await_ready(), true);
}

TEST_F(LeavingTest, APageThatNobodyTouchedMayCloseAtOnce) {
    open("/form");

    EXPECT_EQ(mayClose()->value, true);
    EXPECT_EQ(asked(), nullptr);
}

TEST_F(LeavingTest, APageThatWasTouchedAndAsksNothingMayCloseAMomentLater) {
    touch("/plain");

    const auto closing = mayClose();

    EXPECT_TRUE(waitFor([&] { return closing->value.has_value(); }));
    EXPECT_EQ(closing->value, true);
    EXPECT_EQ(asked(), nullptr);
}

TEST_F(LeavingTest, APageThatWasTouchedAsksWhetherItIsToBeLeft) {
    touch("/form");
    for (const bool leaves : {false, true}) {
        const auto closing = mayClose();
        EXPECT_EQ(expectDialog(Kind::beforeUnload).host, "127.0.0.1");
        settle();
        EXPECT_EQ(closing->value, std::nullopt);
        answer({.isAccepted = leaves});

        EXPECT_EQ(closing->value, leaves);
    }
}

TEST_F(LeavingTest, WhoKeepsAPageIsAskedAgainTheNextTime) {
    touch("/form");
    const auto first = mayClose();
    static_cast<void>(expectDialog(Kind::beforeUnload));
    answer(cancelled);

    const auto second = mayClose();
    static_cast<void>(expectDialog(Kind::beforeUnload));
    answer(yes());

    EXPECT_EQ(first->value, false);
    EXPECT_EQ(second->value, true);
}

TEST_F(LeavingTest, TwoWhoWantAPageClosedGetOneAnswer) {
    touch("/form");
    const auto first = mayClose();
    const auto second = mayClose();
    static_cast<void>(expectDialog(Kind::beforeUnload));

    answer(yes());

    EXPECT_EQ(first->value, true);
    EXPECT_EQ(second->value, true);
    EXPECT_EQ(asked(), nullptr);
}

TEST_F(LeavingTest, AQuestionThatNobodyWaitsForIsTakenBackAndThePageGoesOn) {
    touch("/form");
    auto closing = mayClose();
    static_cast<void>(expectDialog(Kind::beforeUnload));

    closing.reset();

    EXPECT_EQ(asked(), nullptr);
    EXPECT_EQ(evaluate(*view, "1 + 1").text, "2");
}

TEST_F(LeavingTest, AHangingPageMayCloseAfterAMoment) {
    touch("/form");
    static_cast<void>(evaluate(*view, "setTimeout(() => { while (true); }, 0); 0"));
    settle();

    const auto closing = mayClose();

    EXPECT_TRUE(waitFor([&] { return closing->value.has_value(); }));
    EXPECT_EQ(closing->value, true);
}

TEST_F(LeavingTest, APageThatIsBusyForLessThanThatStillAsks) {
    touch("/form");
    static_cast<void>(evaluate(*view,
                               "setTimeout(() => { const end = Date.now() + 700;"
                               "while (Date.now() < end); }, 0); 0"));
    settle();

    const auto closing = mayClose();

    static_cast<void>(expectDialog(Kind::beforeUnload));
    EXPECT_EQ(closing->value, std::nullopt);
}

TEST_F(LeavingTest, APageThatHangsInItsDialogsMayCloseAllTheSame) {
    touch("/form");
    static_cast<void>(evaluate(*view, "setTimeout(() => { while (true) confirm('?'); }, 0); 0"));
    static_cast<void>(expectDialog(Kind::confirm));

    const auto closing = mayClose();

    EXPECT_TRUE(waitFor([&] { return closing->value.has_value(); }));
    EXPECT_EQ(closing->value, true);
}

TEST_F(LeavingTest, StayingKeepsThePageThatStands) {
    touch("/form");
    for (const std::string host : {"127.0.0.1", "localhost"}) {
        view->load(url("/next", host));
        EXPECT_EQ(view->url(), url("/next", host));
        static_cast<void>(expectDialog(Kind::beforeUnload));

        answer(cancelled);

        expectStands("/form");
        EXPECT_TRUE(log().starts_with("key")) << host;
    }
}

TEST_F(LeavingTest, LeavingGoesOn) {
    for (const std::string host : {"127.0.0.1", "localhost"}) {
        touch("/form");
        view->load(url("/next", host));
        static_cast<void>(expectDialog(Kind::beforeUnload));

        answer(yes());

        EXPECT_TRUE(waitFor([&] { return view->title() == "Next"; })) << host;
        expectStands("/next", host);
    }
}

TEST_F(LeavingTest, ALinkAsksAsAnAddressDoes) {
    touch("/form");
    for (const std::string host : {"127.0.0.1", "localhost"}) {
        static_cast<void>(
            evaluate(*view, "location.href = '" + server.url("/next", host) + "'; 0"));
        static_cast<void>(expectDialog(Kind::beforeUnload));

        answer(cancelled);

        expectStands("/form");
        EXPECT_TRUE(log().starts_with("key")) << host;
    }
}

TEST_F(LeavingTest, ReloadAndBackKeepThePageTooWhenThePersonStays) {
    open("/next");
    touch("/form");
    for (const auto go : {&WebView::reload, &WebView::goBack}) {
        ((*view).*go)();
        static_cast<void>(expectDialog(Kind::beforeUnload));

        answer(cancelled);

        expectStands("/form");
        EXPECT_TRUE(view->canGoBack());
    }
    EXPECT_TRUE(log().starts_with("key"));
}

TEST_F(LeavingTest, AfterStayingThePageMayMoveWithinItself) {
    touch("/form");
    view->load(url("/next"));
    static_cast<void>(expectDialog(Kind::beforeUnload));
    answer(cancelled);
    expectStands("/form");

    static_cast<void>(evaluate(*view, "history.pushState(0, '', '/form#2'); 0"));

    expectStands("/form#2");
}

TEST_F(LeavingTest, AnotherAddressTakesThePlaceOfOneThatIsAskedAbout) {
    touch("/form");
    server.serve("/other", "<title>Other</title>");
    view->load(url("/next"));
    static_cast<void>(expectDialog(Kind::beforeUnload));

    view->load(url("/other"));
    static_cast<void>(expectDialog(Kind::beforeUnload));
    answer(yes());

    EXPECT_TRUE(waitFor([&] { return view->title() == "Other"; }));
    EXPECT_EQ(server.requests("/next"), 0);
}

TEST_F(LeavingTest, APageThatNobodyTouchedIsLeftWithoutAQuestion) {
    open("/form");

    open("/next");

    EXPECT_EQ(delegate.finishedTitles.back(), "Next");
}

TEST_F(LeavingTest, ASilencedPageThatWantsToGoStaysAndThePersonIsAskedAllTheSame) {
    touch("/form");
    dialogs().silence();
    static_cast<void>(evaluate(*view, "location.href = '/next'; 0"));
    settle();
    expectStands("/form");

    view->load(url("/next"));

    static_cast<void>(expectDialog(Kind::beforeUnload));
}

TEST_F(LeavingTest, ADownloadDoesNotAskThePageThatStays) {
    touch("/form");
    server.serve("/file", Answer{.body = "data", .type = "application/x-unknown"});
    delegate.responsePolicy = ResponsePolicy::download;
    view->load(url("/file", "localhost"));

    EXPECT_TRUE(waitFor([&] { return server.requests("/file") == 1 && !view->isLoading(); }));

    EXPECT_EQ(asked(), nullptr);
    EXPECT_EQ(view->url(), url("/form"));
}

TEST_F(LeavingTest, AViewMayGoWhileItsPageAsks) {
    touch("/form");
    const auto closing = mayClose();
    static_cast<void>(expectDialog(Kind::beforeUnload));

    delegate.leave();
    gtk_window_set_child(window, nullptr);
    view.reset();

    EXPECT_EQ(closing->value, true);
    view = configuration->makeWebView();
}

}  // namespace
}  // namespace orvu
