#pragma once

#include "core/BrowserStore.h"
#include "engine/LoopbackServer.h"
#include "fakes/FakeNetworkMonitor.h"
#include "platform/linux/GlibMainLoop.h"
#include "platform/linux/files/LinuxDownloadFolder.h"
#include "platform/linux/files/LinuxFileIO.h"
#include "platform/linux/web/OrvuWebView.h"
#include "platform/linux/images/SandboxedImageCodec.h"
#include "platform/linux/http/SoupHttpSession.h"
#include "platform/linux/web/WebKitContentRules.h"
#include "platform/linux/web/WebKitEngine.h"
#include "support/FakeDesktop.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orvu {

/// Writes down what a page wants to do, and lets it.
class RecordingDelegate : public NavigationDelegate {
public:
    explicit RecordingDelegate(WebView& view) { watch(view); }
    ~RecordingDelegate() override { leave(); }

    void watch(WebView& view) {
        leave();
        view_ = &view;
        view_->setNavigationDelegate(this);
    }
    /// The view may go then.
    void leave() {
        if (view_) view_->setNavigationDelegate(nullptr);
        view_ = nullptr;
    }

    [[nodiscard]] NavigationPolicy decidePolicy(const NavigationAction& action) override {
        actions.push_back(action);
        return NavigationPolicy::allow;
    }
    [[nodiscard]] ResponsePolicy decidePolicy(const NavigationResponse& response) override {
        responses.push_back(response);
        return responsePolicy;
    }
    void didFinish() override { finishedTitles.push_back(view_->title()); }
    void createWebView(const NavigationAction& action) override { created.push_back(action); }
    void requestMediaCapture(MediaCaptureRequest request) override {
        captures.push_back(std::move(request));
    }
    void permissionRefused(RefusedPermission permission) override { refused.push_back(permission); }
    void requestDownload(std::unique_ptr<DownloadRequest> request) override { request->begin(); }
    void documentUnloaded() override { ++documentsUnloaded; }

    std::vector<NavigationAction> actions;
    std::vector<NavigationResponse> responses;
    std::vector<NavigationAction> created;
    std::vector<MediaCaptureRequest> captures;
    std::vector<RefusedPermission> refused;
    int documentsUnloaded = 0;
    std::vector<std::string> finishedTitles;  ///< the view's title at each finish
    ResponsePolicy responsePolicy = ResponsePolicy::allow;

private:
    WebView* view_ = nullptr;
};

/// The real engine, a server, and folders that go with the test.
class EngineTest : public testing::Test {
protected:
    static constexpr std::string_view pageProcessName =
        "WebKitWebProces";  ///< as the kernel cuts it

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
    /// What a future brings; nothing if that takes longer than `waitFor` waits.
    template <class T>
    [[nodiscard]] static std::optional<T> awaited(Future<T> future) {
        const auto wait = [](Future<T> until) -> Task<T> { co_return co_await until; };
        auto task = wait(std::move(future));
        task.start();
        if (!waitFor([&] { return task.isDone(); })) return std::nullopt;
        return task.result();
    }
    /// The picture in a file's bytes, from the decoder's process.
    [[nodiscard]] ImagePointer decoded(const std::string& bytes) {
        return awaited(images.decode(bytes)).value_or(nullptr);
    }
    /// The processes below this one that bear a name, of which the kernel keeps 15 characters.
    [[nodiscard]] static std::vector<int> processesNamed(std::string_view name);
    /// The engine's page processes that this process started.
    [[nodiscard]] static std::vector<int> pageProcesses() {
        return processesNamed(pageProcessName);
    }
    /// The processes of a name that began since `before`. What previous tests left may end at any
    /// time.
    [[nodiscard]] static std::vector<int> processesSince(const std::vector<int>& before,
                                                         std::string_view name);
    [[nodiscard]] static std::vector<int> pageProcessesSince(const std::vector<int>& before) {
        return processesSince(before, pageProcessName);
    }
    /// What windows share, made when it is first wanted.
    [[nodiscard]] AppServices& services();

    std::filesystem::path folder;
    SystemPaths paths{folder / "config", folder / "data", folder / "cache"};
    LoopbackServer server;
    FakeDesktop fakes;  ///< what is left of a desktop beside the real parts below
    FakeUserDefaults& defaults = fakes.defaults;
    GlibMainLoop loop;
    FakeNetworkMonitor network;
    WebKitEngine engine{paths, loop, fakes.activity, network};
    WebKitRuleListStore ruleLists{folder / "ContentRules"};
    SoupHttpSession iconRequests{FaviconStore::httpOptions};
    SandboxedImageCodec images{loop};
    LinuxFileIO files{loop};
    LinuxDownloadFolder downloadFolder{folder / "Downloads"};

private:
    [[nodiscard]] Platform platform();

    std::optional<AppServices> services_;  // last, so that it ends before what it uses
};

}  // namespace orvu
