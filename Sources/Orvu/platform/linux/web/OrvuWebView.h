#pragma once

#include "platform/AddressFlood.h"
#include "platform/CrashReload.h"
#include "platform/InitiatedLoad.h"
#include "platform/LoadQueue.h"
#include "platform/LoadWatch.h"
#include "platform/MainLoop.h"
#include "platform/NavigationCauses.h"
#include "platform/NetworkMonitor.h"
#include "platform/PageAddress.h"
#include "platform/WebView.h"
#include "platform/linux/web/EngineDialogs.h"
#include "platform/linux/web/EngineMenu.h"
#include "platform/linux/web/PageFinder.h"
#include "platform/linux/web/PageLeaving.h"
#include "platform/linux/web/PagePrinting.h"
#include "platform/linux/web/PageSource.h"
#include "platform/linux/web/SwipeGestures.h"
#include "platform/linux/web/WebKitContentRules.h"
#include "platform/linux/web/WebKitSession.h"

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvu {

class OrvuWebView;

/// What all views of one configuration are made with.
struct WebKitShared {
    WebKitShared(std::shared_ptr<WebKitSession> ofSession, NetworkMonitor& monitor,
                 std::shared_ptr<LoadQueue> loads,
                 std::shared_ptr<const DownloadTaker> downloadTaker)
        : session(std::move(ofSession)),
          network(monitor),
          queue(std::move(loads)),
          taker(std::move(downloadTaker)) {}

    std::shared_ptr<WebKitSession> session;
    WebKitUserContent content;
    NetworkMonitor& network;
    const std::shared_ptr<LoadQueue> queue;            ///< of all pages that load
    const std::shared_ptr<const DownloadTaker> taker;  ///< of pages that are saved
    std::string userAgent;                             ///< whole; empty for the engine's own
    bool elementFullscreen = false;
    std::weak_ptr<OrvuWebView*> inWindow = {};  ///< the view that was put into a window last
};

/// A page of the engine. Making the engine's view takes some 70 ms of the main thread, so it is
/// made when somebody wants to see it, in an idle turn after a load was asked for, or, for a load that
/// waits, in its turn (`place_`): many tabs can thus be restored without holding up the window.
///
/// `address_` tells the page's address; `pending_` waits for the view to be made. A load goes from
/// started to committed to finished, but "finished" also ends one that failed, was stopped or was
/// replaced by the next: `committed_` and `failed_` tell these apart, and `loadNumber_` drops answers
/// that belong to an earlier load. A view that never showed a page because the network failed it
/// tries again when the network comes back.
class OrvuWebView : public WebView {
public:
    OrvuWebView(std::shared_ptr<WebKitShared> shared, MainLoop& loop);
    OrvuWebView(const OrvuWebView&) = delete;
    OrvuWebView& operator=(const OrvuWebView&) = delete;
    /// Ends the page's process: the engine would keep it for later.
    ~OrvuWebView() override;

    /// The view that an engine's one belongs to; nullptr once that is gone.
    [[nodiscard]] static OrvuWebView* of(WebKitWebView* view);

    /// The engine began a download for this page. What may go on goes to `taker`.
    void downloadBegan(std::unique_ptr<Download> download, WebKitDownload* engineDownload,
                       std::shared_ptr<const DownloadTaker> taker);

    /// The widget to put into a window. It stays this view's own.
    [[nodiscard]] GtkWidget* widget();
    /// Whether the engine's view was made.
    [[nodiscard]] bool isMade() const { return static_cast<bool>(view_); }
    /// To be told when the widget was put into a window: pages that are hidden get the size that
    /// this one has there.
    void cameIntoWindow();
    /// While off, the focus that arrives is not reported: it comes and goes when views are moved.
    void setReportsFocus(bool reports) { reportsFocus_ = reports; }

    void load(const Url& url) override;
    void load(const Url& url, const Initiator& initiator) override { begin({url, initiator}); }
    void loadInTurn(const Url& url, std::size_t turn) override;
    void stopLoading() override;
    void reload() override;
    void goBack() override;
    void goForward() override;
    [[nodiscard]] std::string title() const override { return title_; }
    [[nodiscard]] std::optional<Url> url() const override { return address_.url(); }
    [[nodiscard]] bool canGoBack() const override;
    [[nodiscard]] bool canGoForward() const override;
    [[nodiscard]] double estimatedProgress() const override;
    [[nodiscard]] bool isLoading() const override;
    [[nodiscard]] bool hasOnlySecureContent() const override { return secure_; }
    [[nodiscard]] const std::optional<LoadFailure>& failure() const override {
        return loads_.failure();
    }
    void dismissFailure() override { loads_.dismiss(); }
    void loadWithRefusedCertificate() override;
    void showInspector() override;
    [[nodiscard]] ActiveCapture activeCapture() const override { return capture_; }
    [[nodiscard]] double pageZoom() const override { return zoom_; }
    void setPageZoom(double zoom) override;
    [[nodiscard]] Future<ScriptResult> evaluateJavaScript(std::string script) override;
    [[nodiscard]] Future<bool> find(std::string text, FindConfiguration configuration) override;
    void stopCapture(CaptureKind kind) override;
    [[nodiscard]] std::shared_ptr<WebsiteData> websiteData() override;
    [[nodiscard]] PageDialogs& dialogs() override { return dialogs_; }
    [[nodiscard]] Future<bool> mayClose() override;
    void print() override;
    void savePage() override;
    [[nodiscard]] Future<std::optional<std::string>> source() override;
    void showSource(const Url& page, std::string text) override;
    [[nodiscard]] const std::optional<Url>& hoveredLink() const override { return hoveredLink_; }
    sigc::connection connectMenuChosen(
        const sigc::slot<void(const PageMenuChoice&)>& slot) override {
        return menuChosen_.connect(slot);
    }
    void setNavigationDelegate(NavigationDelegate* delegate) override { delegate_ = delegate; }
    sigc::connection connectPropertyChanged(
        const sigc::slot<void(WebViewProperty)>& slot) override {
        return changed_.connect(slot);
    }

    /// The source that this view is to show as text, if it is one of these.
    [[nodiscard]] const PageSource& shownSource() const { return source_; }

    /// Calls `slot` when an element of the page takes the whole screen, and when it gives it back.
    sigc::connection connectFullscreen(const sigc::slot<void(bool)>& slot) {
        return fullscreen_.connect(slot);
    }
    /// By which others find out whether this view still lives.
    [[nodiscard]] std::weak_ptr<OrvuWebView*> handle() const { return self_; }
    /// The view of that handle; nullptr once it is gone.
    [[nodiscard]] static OrvuWebView* living(const std::weak_ptr<OrvuWebView*>& handle);

private:
    /// The engine's signals, each handed on to the view that they are connected for.
    class Events {
    public:
        static void connect(WebKitWebView* view, OrvuWebView* self);
        static void disconnect(WebKitWebView* view, OrvuWebView* self);

    private:
        struct Handlers;
    };

    /// How long another load waits at most for the one that nothing keeps from starting.
    static constexpr std::chrono::seconds startWait{1};
    /// More of a title isn't looked through.
    static constexpr std::size_t titleBytes = 16'000;

    void make();
    void takeSize();
    void addDialogs();
    void addMenu();
    void hurry();
    void beginNavigation();
    void documentGone();
    [[nodiscard]] bool asksBefore(WebKitPolicyDecision* decision);
    void begin(const UrlRequest& request);
    void beginInView(const UrlRequest& request);
    void loadIsOver();
    void endPlaceWhenPainted();
    void loadAgain(const Url& url);
    void noteCause(NavigationAction& action, bool isRedirect);
    [[nodiscard]] bool overtakes(const NavigationAction& action);
    void startEngine(const UrlRequest& request);
    [[nodiscard]] bool targetStarts();
    [[nodiscard]] bool givesWay();
    void takeOver();
    void emit(std::initializer_list<WebViewProperty> properties);
    void engineMoved();
    void uriChanged(const std::optional<Url>& uri);
    void stopFlood();
    void tellUrl(bool changed);
    void setTitle(std::string_view title);
    void setSecure(bool secure);
    void setHoveredLink(std::optional<Url> link);
    void setCapture(ActiveCapture capture);
    void setFullscreen(bool on);
    void takeScreenBack();
    void loadChanged(WebKitLoadEvent event);
    void loadFailed(const char* uri, const GError* error);
    void loadFailedInTls(const char* uri, GTlsCertificate* certificate, GTlsCertificateFlags flags);
    void noteFailure(const std::optional<LoadFailureCause>& cause, const std::optional<Url>& url);
    void refusedAddress(const Url& url);
    void documentStands();
    void networkCameBack();
    void loadInItsTurn();
    void finish();
    void processTerminated(WebKitWebProcessTerminationReason reason);
    [[nodiscard]] bool showsSource() const;
    /// The engine's address of its page; nothing where it has none.
    [[nodiscard]] std::optional<Url> engineUrl() const;
    [[nodiscard]] WebKitWebView* view() const { return view_.get(); }

    const std::shared_ptr<WebKitShared> shared_;
    MainLoop& loop_;
    NavigationDelegate* delegate_ = nullptr;
    PageDialogs dialogs_;
    GObjectPointer<WebKitWebView> view_;
    GObjectPointer<GTlsCertificate> refused_;  ///< of the present failure by certificate
    // Once the engine's view is made.
    std::optional<SwipeGestures> swipes_;
    std::optional<PageFinder> finder_;
    std::optional<PageLeaving> leaving_;
    std::optional<EngineDialogs> engineDialogs_;
    std::optional<PagePrinting> printing_;
    std::optional<EngineMenu> menu_;
    sigc::signal<void(WebViewProperty)> changed_;
    bool fillsScreen_ = false;  ///< an element of the document does
    sigc::signal<void(bool)> fullscreen_;
    sigc::signal<void(const PageMenuChoice&)> menuChosen_;
    std::string title_;
    PageAddress address_;
    std::optional<UrlRequest> pending_;  ///< to be loaded once the engine is ready for it
    std::vector<std::function<void()>> afterLoad_;  ///< scripts for the page that is on its way
    std::optional<InitiatedLoad> initiated_;        ///< until its target stands
    std::optional<Url> overtaken_;  ///< the target of one that gave way to the load asked for last
    double zoom_ = 1;
    bool secure_ = false;
    ActiveCapture capture_;
    std::optional<Url> hoveredLink_;
    PageSource source_;
    bool reportsFocus_ = true;
    bool committed_ = false;        ///< the present load has shown something
    bool failed_ = false;           ///< the present load failed
    bool becomesDownload_ = false;  ///< the present load
    bool awaitsNetwork_ = false;    ///< the last load failed by the network
    std::uint64_t loadNumber_ = 0;
    NavigationCauses causes_;
    std::optional<NavigationType> ownLoad_;    ///< the program asked for, and has yet to begin
    bool ownLoadRuns_ = false;                 ///< until it stands or fails
    bool menuDownloads_ = false;               ///< an item of the page's menu that saves was chosen
    std::unique_ptr<LoadQueue::Place> place_;  ///< of the present load, until it is over
    bool waits_ = false;                       ///< for its turn
    CrashReload crashReload_;
    AddressFlood flood_;
    bool floods_ = false;  ///< its process is about to be ended
    Scheduled floodStop_;
    LoadWatch loads_;
    /// Lets callbacks of the engine find out whether this view still lives.
    std::shared_ptr<OrvuWebView*> self_ = std::make_shared<OrvuWebView*>(this);
    Scheduled starter_;
    ScopedConnection networkWatch_;
};

}  // namespace orvu
