#include "engine/EngineWorld.h"

#include "shell/siteinfo/SitePanel.h"

namespace orvu {
namespace {

using Choice = SitePermissions::Choice;
using Kind = CaptureKind;

/// A page that asks for devices when it hears an event, and writes down in its body what came.
constexpr auto page = R"(<title>Page</title><body data-log=''><script>
const say = text => document.body.dataset.log += text + ' ';
let taken = [];
const ask = constraints => navigator.mediaDevices.getUserMedia(constraints).then(stream => {
    const tracks = [...stream.getAudioTracks(), ...stream.getVideoTracks()];
    taken.push(...tracks);
    for (const track of tracks) {
        say('got ' + track.kind);
        track.onended = () => say('ended ' + track.kind);
    }
}, error => say(error.name));
document.addEventListener('camera', () => ask({video: true}));
document.addEventListener('microphone', () => ask({audio: true}));
document.addEventListener('both', () => ask({video: true, audio: true}));
document.addEventListener('screen', () => navigator.mediaDevices.getDisplayMedia()
    .then(() => say('got screen'), error => say(error.name)));
document.addEventListener('place', () => navigator.geolocation.getCurrentPosition(
    () => say('got place'), error => say('place ' + error.code)));
document.addEventListener('notify', () => Notification.requestPermission().then(say));
document.addEventListener('paste', () => navigator.clipboard.readText().then(
    () => say('got text'), error => say('paste ' + error.name)));
document.addEventListener('flood', () => {
    let open = 1000;
    for (let i = 0; i < 1000; ++i) {
        navigator.geolocation.getCurrentPosition(() => {}, () => { if (--open == 0) say('all'); });
    }
});
document.addEventListener('disable', () => taken.forEach(track => track.enabled = false));
document.addEventListener('stop', () => taken.forEach(track => track.stop()));
</script>)";

class CaptureTest : public EngineTest {
protected:
    CaptureTest() {
        server.serve("/page", page);
        server.serve("/other", page);
        server.serve("/slow", LoopbackServer::Answer{.held = true});
        gtk_window_set_child(window, GTK_WIDGET(pages));
        gtk_window_present(window);
    }
    ~CaptureTest() override { gtk_window_destroy(window); }

    [[nodiscard]] BrowserTab& tab() const { return *store.active(); }
    [[nodiscard]] BrowserTab& openPage(const std::string& path = "/page",
                                       const std::string& host = "127.0.0.1") {
        auto& opened = store.newTab(std::nullopt, BrowserStore::Select::yes);
        GtkWidget* const view = static_cast<OrvuWebView&>(opened.webView()).widget();
        webkit_settings_set_enable_mock_capture_devices(
            webkit_web_view_get_settings(WEBKIT_WEB_VIEW(view)), TRUE);
        gtk_box_append(pages, view);  // a page that was never in a window has to wait
        load(opened, path, host);
        return opened;
    }
    void load(BrowserTab& opened, const std::string& path, const std::string& host = "127.0.0.1") {
        const auto before = store.visits().size();
        opened.webView().load(url(path, host));
        EXPECT_TRUE(waitFor([&] { return store.visits().size() > before; }));
    }
    static void tell(BrowserTab& opened, const std::string& event) {
        const auto told =
            evaluate(opened.webView(), "document.dispatchEvent(new Event('" + event + "')); 0");
        EXPECT_NE(told.kind, ScriptResult::Kind::failed);
    }
    [[nodiscard]] static std::string log(BrowserTab& opened) {
        return evaluate(opened.webView(), "document.body.dataset.log").text;
    }
    static void expectLog(BrowserTab& opened, const std::string& wanted) {
        EXPECT_TRUE(waitFor([&] { return log(opened) == wanted; })) << log(opened);
    }
    static void expectQuestion(BrowserTab& opened, MediaCaptureType type,
                               const std::string& host = "127.0.0.1") {
        const auto wanted = CaptureQuestion{type, host};
        EXPECT_TRUE(waitFor([&] { return opened.captureQuestion() == wanted; }));
    }
    static void expectCapture(const BrowserTab& opened, ActiveCapture wanted) {
        EXPECT_TRUE(waitFor([&] { return opened.activeCapture() == wanted; }))
            << opened.activeCapture().camera << opened.activeCapture().microphone;
    }
    /// A page that is allowed all, and uses it.
    [[nodiscard]] BrowserTab& openCapturing() {
        choose(Choice::allow, Kind::camera);
        choose(Choice::allow, Kind::microphone);
        auto& opened = openPage();
        tell(opened, "both");
        expectCapture(opened, {.camera = true, .microphone = true});
        return opened;
    }
    static void expectRefused(const BrowserTab& opened, RefusedPermission permission) {
        EXPECT_TRUE(waitFor([&] { return opened.refusedPermissions().contains(permission); }))
            << static_cast<int>(permission);
    }
    void choose(Choice choice, Kind kind, const std::string& host = "127.0.0.1") {
        services().permissions().set(choice, kind, host, Persistence::persistent);
    }

    GtkWindow* const window = GTK_WINDOW(gtk_window_new());
    GtkBox* const pages = GTK_BOX(gtk_box_new(GTK_ORIENTATION_VERTICAL, 0));
    BrowserStore store{services(), false, Profile::personal()};
};

TEST_F(CaptureTest, AnAllowedSiteGetsBothDevicesWithoutAQuestion) {
    choose(Choice::allow, Kind::camera);
    choose(Choice::allow, Kind::microphone);
    auto& opened = openPage();

    tell(opened, "both");

    expectLog(opened, "got audio got video ");
    EXPECT_FALSE(opened.captureQuestion());
}

TEST_F(CaptureTest, ABlockedSiteIsDeniedWithoutAQuestion) {
    choose(Choice::block, Kind::camera);
    auto& opened = openPage();

    tell(opened, "camera");
    expectLog(opened, "NotAllowedError ");
    tell(opened, "both");

    expectLog(opened, "NotAllowedError NotAllowedError ");
}

TEST_F(CaptureTest, ForEachKindOfRequestThePersonIsAskedUnderThePagesHost) {
    auto& opened = openPage();

    tell(opened, "camera");
    expectQuestion(opened, MediaCaptureType::camera);
    opened.answer(*opened.question(), PageAnswer::allow);
    expectLog(opened, "got video ");
    tell(opened, "microphone");
    expectQuestion(opened, MediaCaptureType::microphone);
    opened.answer(*opened.question(), PageAnswer::refuse);

    expectLog(opened, "got video NotAllowedError ");
    EXPECT_TRUE(services().permissions().choices().empty());
}

TEST_F(CaptureTest, ADismissedPageMayAskAgainAtOnce) {
    auto& opened = openPage();
    tell(opened, "both");
    expectQuestion(opened, MediaCaptureType::cameraAndMicrophone);
    opened.answer(*opened.question(), PageAnswer::dismiss);
    expectLog(opened, "NotAllowedError ");

    tell(opened, "both");
    expectQuestion(opened, MediaCaptureType::cameraAndMicrophone);
    opened.answer(*opened.question(), PageAnswer::allow);

    expectLog(opened, "NotAllowedError got audio got video ");
}

TEST_F(CaptureTest, ABlockEndsTheTrackOfThatKindAtOnceAndDeniesTheNextRequest) {
    choose(Choice::allow, Kind::camera);
    choose(Choice::allow, Kind::microphone);
    auto& opened = openPage();
    tell(opened, "both");
    expectLog(opened, "got audio got video ");

    choose(Choice::block, Kind::microphone);

    EXPECT_TRUE(waitFor([&] { return log(opened).contains("ended audio"); }));
    settle();
    EXPECT_FALSE(log(opened).contains("ended video"));
    tell(opened, "microphone");
    EXPECT_TRUE(waitFor([&] { return log(opened).contains("NotAllowedError"); }));
}

TEST_F(CaptureTest, ABlockTakesBackWhatThePersonAllowedAndThePageAsksAnewAfterAsk) {
    auto& opened = openPage();
    tell(opened, "camera");
    expectQuestion(opened, MediaCaptureType::camera);
    opened.answer(*opened.question(), PageAnswer::allow);
    expectLog(opened, "got video ");

    choose(Choice::block, Kind::camera);
    EXPECT_TRUE(waitFor([&] { return log(opened).contains("ended video"); }));
    choose(Choice::ask, Kind::camera);
    tell(opened, "camera");

    expectQuestion(opened, MediaCaptureType::camera);
}

TEST_F(CaptureTest, ABlockReachesThePagesOfTheHostInAllWindowsAndNoOthers) {
    choose(Choice::allow, Kind::camera);
    choose(Choice::allow, Kind::camera, "localhost");
    auto& first = openPage();
    auto& second = openPage("/other");
    auto& third = openPage("/page", "localhost");
    for (auto* const each : {&first, &second, &third}) {
        tell(*each, "camera");
        expectLog(*each, "got video ");
    }

    choose(Choice::block, Kind::camera);

    for (auto* const each : {&first, &second}) {
        EXPECT_TRUE(waitFor([&] { return log(*each).contains("ended video"); }));
    }
    settle();
    EXPECT_EQ(log(third), "got video ");
}

TEST_F(CaptureTest, AnotherDocumentDropsTheQuestion) {
    auto& opened = openPage();
    tell(opened, "camera");
    expectQuestion(opened, MediaCaptureType::camera);

    load(opened, "/other");

    EXPECT_FALSE(opened.captureQuestion());
    tell(opened, "camera");
    expectQuestion(opened, MediaCaptureType::camera);
}

TEST_F(CaptureTest, ATabMayGoWithItsQuestion) {
    auto& opened = openPage();
    tell(opened, "camera");
    expectQuestion(opened, MediaCaptureType::camera);

    store.close(opened);
    settle();

    EXPECT_EQ(store.tabs().size(), 1u);
}

TEST_F(CaptureTest, APageMayAskWhileTheNextOneIsStillLoadingOverIt) {
    server.serve("/timer",
                 std::string{page} + "<script>setTimeout(() => ask({video: true}), 600)</script>");
    auto& opened = openPage("/timer");

    opened.webView().load(url("/slow"));

    expectQuestion(opened, MediaCaptureType::camera);
    EXPECT_EQ(opened.path(), "/slow");
    opened.answer(*opened.question(), PageAnswer::allow);
    EXPECT_FALSE(opened.captureQuestion());
}

/// The address is the other's already, but what the page asks for must not be decided by that.
TEST_F(CaptureTest, APageGetsNothingInTheNameOfAnotherHostThatIsLoadingOverIt) {
    choose(Choice::allow, Kind::camera, "localhost");
    server.serve("/timer", std::string{page} + R"(<script>setTimeout(() =>
        navigator.mediaDevices.getUserMedia({video: true}).then(
            () => fetch('/got'), () => fetch('/refused')), 600)</script>)");
    auto& opened = openPage("/timer");

    opened.webView().load(url("/slow", "localhost"));

    EXPECT_TRUE(waitFor([&] {
        return opened.captureQuestion() ||
               server.requests("/refused") + server.requests("/got") > 0;
    }));
    EXPECT_EQ(server.requests("/got"), 0);
}

TEST_F(CaptureTest, AFrameOfAnotherSiteAsksUnderThePagesHost) {
    choose(Choice::allow, Kind::camera, "localhost");
    server.serve("/frame", "<script>navigator.mediaDevices.getUserMedia({video: true})</script>");
    server.serve("/outer", "<title>Outer</title><iframe allow='camera *' src='" +
                               server.url("/frame", "localhost") + "'></iframe>");

    auto& opened = openPage("/outer");

    expectQuestion(opened, MediaCaptureType::camera);
}

TEST_F(CaptureTest, AllOtherPermissionsAreDeniedWithoutAQuestion) {
    auto& opened = openPage();

    for (const std::string event : {"screen", "place", "notify"}) tell(opened, event);

    EXPECT_TRUE(waitFor([&] { return log(opened).contains("NotAllowedError"); }));
    EXPECT_TRUE(waitFor([&] { return log(opened).contains("place 1"); })) << log(opened);
    EXPECT_TRUE(waitFor([&] { return log(opened).contains("denied"); })) << log(opened);
    EXPECT_FALSE(log(opened).contains("got"));
    EXPECT_FALSE(opened.captureQuestion());
}

// --- What is on ---------------------------------------------------------------------------------

TEST_F(CaptureTest, ATabKnowsWhatItsPageCapturesFromTheBeginningToTheEnd) {
    choose(Choice::allow, Kind::camera);
    choose(Choice::allow, Kind::microphone);
    auto& opened = openPage();
    EXPECT_FALSE(opened.activeCapture().any());

    tell(opened, "camera");
    expectCapture(opened, {.camera = true});
    tell(opened, "microphone");
    expectCapture(opened, {.camera = true, .microphone = true});
    tell(opened, "stop");

    expectCapture(opened, {});
}

TEST_F(CaptureTest, AStopEndsTheTracksAndTheNextRequestIsAskedAboutEvenOnAnAllowedSite) {
    auto& opened = openCapturing();

    opened.stopCapture();

    expectCapture(opened, {});
    EXPECT_TRUE(waitFor([&] {
        return log(opened).contains("ended audio") && log(opened).contains("ended video");
    }));
    tell(opened, "camera");
    expectQuestion(opened, MediaCaptureType::camera);
    opened.answer(*opened.question(), PageAnswer::allow);
    expectCapture(opened, {.camera = true});
}

TEST_F(CaptureTest, ACaptureIsOffWhenItsDocumentHasGone) {
    auto& opened = openCapturing();

    load(opened, "/other");

    expectCapture(opened, {});
}

TEST_F(CaptureTest, ACaptureIsOffWhenThePagesProcessHasGone) {
    auto& opened = openCapturing();

    webkit_web_view_terminate_web_process(
        WEBKIT_WEB_VIEW(static_cast<OrvuWebView&>(opened.webView()).widget()));

    expectCapture(opened, {});
}

/// The page could go on at any moment.
TEST_F(CaptureTest, ATrackThatThePageDisabledCountsAsOn) {
    auto& opened = openCapturing();

    tell(opened, "disable");
    settle();

    EXPECT_EQ(opened.activeCapture(), (ActiveCapture{.camera = true, .microphone = true}));
}

/// The page can't go on by itself.
TEST_F(CaptureTest, WhatIsMutedFromOutsideCountsAsOffUntilItGoesOn) {
    auto& opened = openCapturing();
    auto* const view = WEBKIT_WEB_VIEW(static_cast<OrvuWebView&>(opened.webView()).widget());

    webkit_web_view_set_microphone_capture_state(view, WEBKIT_MEDIA_CAPTURE_STATE_MUTED);
    expectCapture(opened, {.camera = true});
    webkit_web_view_set_microphone_capture_state(view, WEBKIT_MEDIA_CAPTURE_STATE_ACTIVE);

    expectCapture(opened, {.camera = true, .microphone = true});
}

TEST_F(CaptureTest, ATabInTheBackgroundGoesOnAndIsKnownTo) {
    auto& opened = openCapturing();

    gtk_widget_set_visible(static_cast<OrvuWebView&>(opened.webView()).widget(), FALSE);
    settle();

    EXPECT_EQ(opened.activeCapture(), (ActiveCapture{.camera = true, .microphone = true}));
}

TEST_F(CaptureTest, WhatAFrameOfAnotherSiteCapturesIsThePages) {
    choose(Choice::allow, Kind::camera);
    server.serve("/frame", "<script>navigator.mediaDevices.getUserMedia({video: true})</script>");
    server.serve("/outer", "<title>Outer</title><iframe allow='camera *' src='" +
                               server.url("/frame", "localhost") + "'></iframe>");

    auto& opened = openPage("/outer");

    expectCapture(opened, {.camera = true});
    opened.stopCapture();
    expectCapture(opened, {});
}

// --- What is refused ----------------------------------------------------------------------------

TEST_F(CaptureTest, ATabKnowsWhatItsPageWasRefusedUntilTheDocumentGoes) {
    auto& opened = openPage();

    for (const std::string event : {"screen", "place", "notify", "paste"}) tell(opened, event);

    for (const auto refused : {RefusedPermission::screen, RefusedPermission::location,
                               RefusedPermission::notifications, RefusedPermission::clipboard}) {
        expectRefused(opened, refused);
    }
    EXPECT_FALSE(log(opened).contains("got")) << log(opened);
    load(opened, "/other");
    for (const auto each : RefusedPermissions::all) {
        EXPECT_FALSE(opened.refusedPermissions().contains(each)) << static_cast<int>(each);
    }
}

TEST_F(CaptureTest, AFloodOfRequestsIsRefusedWithOneSignal) {
    auto& opened = openPage();
    int changes = 0;
    opened.connectChanged([&] { ++changes; });

    tell(opened, "flood");

    EXPECT_TRUE(waitFor([&] { return log(opened) == "all "; })) << log(opened);
    EXPECT_EQ(changes, 1);
    expectRefused(opened, RefusedPermission::location);
}

}  // namespace
}  // namespace orvu
