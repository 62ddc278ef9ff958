#pragma once

#include "platform/CrashReload.h"
#include "platform/MainLoop.h"
#include "platform/WebView.h"
#include "platform/linux/web/PageFinder.h"
#include "platform/linux/web/WebKitContentRules.h"
#include "platform/linux/web/WebKitSession.h"

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>

namespace orvu {

/// What all views of one configuration are made with.
struct WebKitShared {
    explicit WebKitShared(std::shared_ptr<WebKitSession> ofSession)
        : session(std::move(ofSession)) {}

    std::shared_ptr<WebKitSession> session;
    WebKitUserContent content;
    std::string userAgent;  ///< whole; empty for the engine's own
    bool elementFullscreen = false;
};

/// A page of the engine. Making the engine's view takes some 70 ms of the main thread, so it is
/// made when somebody wants to see it, or in an idle turn after a load was asked for: many tabs
/// can thus be restored without holding up the window.
///
/// Three addresses: `pending_` waits for the view to be made; `page_` is that of the document that
/// stands; `url_`, which others see, is the one asked for from the start of a load on. The engine's
/// own address changes at the start of a load and back to nothing or to the document's when one
/// fails, so `uriChanged` puts `page_` in the place of nothing. A load goes from started to
/// committed to finished, but "finished" also ends one that failed, was stopped or was replaced by
/// the next: `committed_` and `failed_` tell these apart, and `loadNumber_` drops answers that
/// belong to an earlier load.
class OrvuWebView : public WebView {
public:
    OrvuWebView(std::shared_ptr<WebKitShared> shared, MainLoop& loop);
    OrvuWebView(const OrvuWebView&) = delete;
    OrvuWebView& operator=(const OrvuWebView&) = delete;
    /// Ends the page's process: the engine would keep it for later.
    ~OrvuWebView() override;

    /// The widget to put into a window. It stays this view's own.
    [[nodiscard]] GtkWidget* widget();
    /// Whether the engine's view was made.
    [[nodiscard]] bool isMade() const { return static_cast<bool>(view_); }
    /// While off, the focus that arrives is not reported: it comes and goes when views are moved.
    void setReportsFocus(bool reports) { reportsFocus_ = reports; }

    void load(const Url& url) override;
    void stopLoading() override;
    void reload() override;
    void goBack() override;
    void goForward() override;
    [[nodiscard]] std::string title() const override { return title_; }
    [[nodiscard]] std::optional<Url> url() const override { return url_; }
    [[nodiscard]] bool canGoBack() const override;
    [[nodiscard]] bool canGoForward() const override;
    [[nodiscard]] double estimatedProgress() const override;
    [[nodiscard]] bool isLoading() const override;
    [[nodiscard]] bool hasOnlySecureContent() const override { return secure_; }
    [[nodiscard]] double pageZoom() const override { return zoom_; }
    void setPageZoom(double zoom) override;
    [[nodiscard]] Future<ScriptResult> evaluateJavaScript(std::string script) override;
    [[nodiscard]] Future<bool> find(std::string text, FindConfiguration configuration) override;
    void stopCapture(CaptureKind kind) override;
    [[nodiscard]] std::shared_ptr<WebsiteData> websiteData() override;
    void setNavigationDelegate(NavigationDelegate* delegate) override { delegate_ = delegate; }
    sigc::connection connectPropertyChanged(
        const sigc::slot<void(WebViewProperty)>& slot) override {
        return changed_.connect(slot);
    }

    /// Calls `slot` when an element of the page takes the whole screen, and when it gives it back.
    sigc::connection connectFullscreen(const sigc::slot<void(bool)>& slot) {
        return fullscreen_.connect(slot);
    }
    /// By which others find out whether this view still lives.
    [[nodiscard]] std::weak_ptr<OrvuWebView*> handle() const { return self_; }

private:
    class Events;

    void make();
    void emit(std::initializer_list<WebViewProperty> properties);
    void uriChanged(std::optional<Url> uri);
    void setUrl(std::optional<Url> url);
    void setTitle(std::string title);
    void setSecure(bool secure);
    void loadChanged(WebKitLoadEvent event);
    void finish();
    void processTerminated(WebKitWebProcessTerminationReason reason);
    [[nodiscard]] WebKitWebView* view() const { return view_.get(); }

    const std::shared_ptr<WebKitShared> shared_;
    MainLoop& loop_;
    NavigationDelegate* delegate_ = nullptr;
    GObjectPointer<WebKitWebView> view_;
    std::optional<PageFinder> finder_;  ///< once the engine's view is made
    sigc::signal<void(WebViewProperty)> changed_;
    sigc::signal<void(bool)> fullscreen_;
    std::string title_;
    std::optional<Url> url_;
    std::optional<Url> pending_;  ///< to be loaded once the engine's view is made
    std::optional<Url> page_;     ///< the address of the page that stands, while another loads
    double zoom_ = 1;
    bool secure_ = false;
    bool reportsFocus_ = true;
    bool committed_ = false;  ///< the present load has shown something
    bool failed_ = false;     ///< the present load failed
    std::uint64_t loadNumber_ = 0;
    CrashReload crashReload_;
    /// Lets callbacks of the engine find out whether this view still lives.
    std::shared_ptr<OrvuWebView*> self_ = std::make_shared<OrvuWebView*>(this);
    Scheduled starter_;
};

}  // namespace orvu
