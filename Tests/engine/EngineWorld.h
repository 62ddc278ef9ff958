#pragma once

#include "core/BrowserStore.h"
#include "engine/LoopbackServer.h"
#include "fakes/FakeSystemSound.h"
#include "fakes/FakeUserDefaults.h"
#include "platform/linux/GlibMainLoop.h"
#include "platform/linux/files/LinuxFileIO.h"
#include "platform/linux/web/OrvuWebView.h"
#include "platform/linux/PixbufImageCodec.h"
#include "platform/linux/SoupHttpSession.h"
#include "platform/linux/web/WebKitContentRules.h"
#include "platform/linux/web/WebKitEngine.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace orvu {

/// Writes down what a page wants to do, and lets it.
class RecordingDelegate : public NavigationDelegate {
public:
    explicit RecordingDelegate(WebView& view) : view_(view) { view.setNavigationDelegate(this); }
    ~RecordingDelegate() override { view_.setNavigationDelegate(nullptr); }

    [[nodiscard]] NavigationPolicy decidePolicy(const NavigationAction& action) override {
        actions.push_back(action);
        return NavigationPolicy::allow;
    }
    [[nodiscard]] ResponsePolicy decidePolicy(const NavigationResponse& response) override {
        responses.push_back(response);
        return responsePolicy;
    }
    void didFinish() override { finishedTitles.push_back(view_.title()); }
    void createWebView(const NavigationAction& action) override { created.push_back(action); }
    void requestMediaCapture(MediaCaptureRequest request) override {
        captures.push_back(std::move(request));
    }
    void documentUnloaded() override { ++documentsUnloaded; }

    std::vector<NavigationAction> actions;
    std::vector<NavigationResponse> responses;
    std::vector<NavigationAction> created;
    std::vector<MediaCaptureRequest> captures;
    int documentsUnloaded = 0;
    std::vector<std::string> finishedTitles;  ///< the view's title at each finish
    ResponsePolicy responsePolicy = ResponsePolicy::allow;

private:
    WebView& view_;
};

/// The real engine, a server, and folders that go with the test.
class EngineTest : public testing::Test {
protected:
    EngineTest();
    ~EngineTest() override;

    /// Runs the main loop until `condition` holds. False after 20 seconds.
    [[nodiscard]] static bool waitFor(const std::function<bool()>& condition);
    /// Runs the main loop until the work at hand is done and nothing new came for a while.
    static void settle();
    [[nodiscard]] Url url(const std::string& path, const std::string& host = "127.0.0.1") const {
        return *Url::parse(server.url(path, host));
    }
    /// Loads a page and waits for its end.
    void loadAndWait(WebView& view, RecordingDelegate& delegate, const std::string& path) const;
    [[nodiscard]] static ScriptResult evaluate(WebView& view, const std::string& script);
    /// The engine's page processes that this process started.
    [[nodiscard]] static std::vector<int> pageProcesses();
    [[nodiscard]] BrowserServices services() {
        return {defaults,    notifications, loop,  engine,     bookmarks,      favicons,
                permissions, trackers,      sound, readerLook, Calendar{"UTC"}};
    }

    std::filesystem::path folder;
    LoopbackServer server;
    GlibMainLoop loop;
    FakeUserDefaults defaults;
    NotificationCenter notifications;
    BookmarkStores bookmarks{defaults, loop};
    WebKitEngine engine;
    WebKitRuleListStore ruleLists{folder / "ContentRules"};
    TrackerBlocker trackers{ruleLists};
    SoupHttpSession http{FaviconStore::httpOptions};
    PixbufImageCodec codec{loop};
    LinuxFileIO files{loop};
    FaviconStore favicons{http, codec, files, folder / "Favicons"};
    SitePermissions permissions{defaults};
    FakeSystemSound sound;
    ReaderLook readerLook{defaults};
};

}  // namespace orvu
