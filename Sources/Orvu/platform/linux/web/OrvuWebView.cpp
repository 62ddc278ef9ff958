#include "platform/linux/web/OrvuWebView.h"

#include "foundation/text/Text.h"
#include "platform/linux/web/CapturePermission.h"
#include "platform/linux/web/LinkMenu.h"
#include "platform/linux/web/PageScript.h"
#include "platform/linux/web/PolicyTranslation.h"
#include "platform/linux/web/SessionWebsiteData.h"

#include <utility>

namespace orvu {
namespace {

/// The settings of a new view. Each view has its own, because one of them follows the view.
GObjectPointer<WebKitSettings> makeSettings(const WebKitShared& shared) {
    auto settings = GObjectPointer<WebKitSettings>::adopt(webkit_settings_new());
    webkit_settings_set_enable_fullscreen(settings.get(), shared.elementFullscreen);
    // How often scripts may open something is the tab's decision: it has to hear of it.
    webkit_settings_set_javascript_can_open_windows_automatically(settings.get(), TRUE);
    if (!shared.userAgent.empty()) {
        webkit_settings_set_user_agent(settings.get(), shared.userAgent.c_str());
    }
    return settings;
}

/// The view, if it still lives.
OrvuWebView* living(const std::weak_ptr<OrvuWebView*>& view) {
    const auto live = view.lock();
    return live ? *live : nullptr;
}

}  // namespace

/// The engine's signals, each handed on to the view that `data` is.
class OrvuWebView::Events {
public:
    static void connect(WebKitWebView* view, OrvuWebView* self) {
        const auto on = [&](gpointer object, const char* signal, auto handler) {
            g_signal_connect(object, signal, G_CALLBACK(handler), self);
        };
        on(view, "notify::uri", uriChanged);
        on(view, "notify::title", titleChanged);
        on(view, "notify::estimated-load-progress", progressChanged);
        on(view, "notify::is-loading", loadingChanged);
        on(webkit_web_view_get_back_forward_list(view), "changed", listChanged);
        on(view, "load-changed", loadChanged);
        on(view, "load-failed", loadFailed);
        on(view, "load-failed-with-tls-errors", loadFailedInTls);
        on(view, "insecure-content-detected", insecureContent);
        on(view, "decide-policy", decidePolicy);
        on(view, "create", create);
        on(view, "context-menu", contextMenu);
        on(view, "permission-request", permissionRequest);
        on(view, "enter-fullscreen", enterFullscreen);
        on(view, "leave-fullscreen", leaveFullscreen);
        on(view, "web-process-terminated", processTerminated);
        on(view, "map", mapped);
        on(view, "unmap", unmapped);
        GtkEventController* const focus = gtk_event_controller_focus_new();
        on(focus, "enter", focusEntered);
        gtk_widget_add_controller(GTK_WIDGET(view), focus);
    }
    static void disconnect(WebKitWebView* view, OrvuWebView* self) {
        g_signal_handlers_disconnect_by_data(view, self);
        g_signal_handlers_disconnect_by_data(webkit_web_view_get_back_forward_list(view), self);
        GListModel* const controllers = gtk_widget_observe_controllers(GTK_WIDGET(view));
        for (guint i = 0; i < g_list_model_get_n_items(controllers); ++i) {
            gpointer const controller = g_list_model_get_item(controllers, i);
            g_signal_handlers_disconnect_by_data(controller, self);
            g_object_unref(controller);
        }
        g_object_unref(controllers);
    }

private:
    static OrvuWebView& self(gpointer data) { return *static_cast<OrvuWebView*>(data); }

    static void uriChanged(WebKitWebView* view, GParamSpec*, gpointer data) {
        const char* const uri = webkit_web_view_get_uri(view);
        self(data).uriChanged(uri ? Url::parse(uri) : std::nullopt);
    }
    static void titleChanged(WebKitWebView* view, GParamSpec*, gpointer data) {
        const char* const title = webkit_web_view_get_title(view);
        self(data).setTitle(title ? title : "");
    }
    static void progressChanged(WebKitWebView*, GParamSpec*, gpointer data) {
        self(data).changed_.emit(WebViewProperty::estimatedProgress);
    }
    static void loadingChanged(WebKitWebView*, GParamSpec*, gpointer data) {
        self(data).changed_.emit(WebViewProperty::isLoading);
    }
    static void listChanged(WebKitBackForwardList*, WebKitBackForwardListItem*, gpointer,
                            gpointer data) {
        self(data).emit({WebViewProperty::canGoBack, WebViewProperty::canGoForward});
    }
    static void loadChanged(WebKitWebView*, WebKitLoadEvent event, gpointer data) {
        self(data).loadChanged(event);
    }
    static gboolean loadFailed(WebKitWebView*, WebKitLoadEvent, const char*, GError*,
                               gpointer data) {
        self(data).failed_ = true;
        return TRUE;  // no page of the engine's own: the previous one stays
    }
    static gboolean loadFailedInTls(WebKitWebView*, const char*, GTlsCertificate*,
                                    GTlsCertificateFlags, gpointer data) {
        self(data).failed_ = true;
        return TRUE;
    }
    static void insecureContent(WebKitWebView*, WebKitInsecureContentEvent, gpointer data) {
        self(data).setSecure(false);
    }
    static gboolean decidePolicy(WebKitWebView*, WebKitPolicyDecision* decision,
                                 WebKitPolicyDecisionType type, gpointer data) {
        NavigationDelegate* const delegate = self(data).delegate_;
        if (!delegate) return FALSE;
        if (type == WEBKIT_POLICY_DECISION_TYPE_RESPONSE) {
            const auto response = navigationResponse(WEBKIT_RESPONSE_POLICY_DECISION(decision));
            if (delegate->decidePolicy(response) == ResponsePolicy::allow) return FALSE;
            webkit_policy_decision_download(decision);
            return TRUE;
        }
        const auto action =
            navigationAction(webkit_navigation_policy_decision_get_navigation_action(
                WEBKIT_NAVIGATION_POLICY_DECISION(decision)));
        const bool refused = action.navigationType == NavigationType::linkActivated &&
                             isForbiddenFile(self(data), action);
        if (!refused && delegate->decidePolicy(action) == NavigationPolicy::allow) return FALSE;
        webkit_policy_decision_ignore(decision);
        return TRUE;
    }
    static GtkWidget* create(WebKitWebView*, WebKitNavigationAction* created, gpointer data) {
        NavigationDelegate* const delegate = self(data).delegate_;
        const auto action = navigationAction(created);
        if (delegate && !isForbiddenFile(self(data), action)) delegate->createWebView(action);
        return nullptr;
    }
    /// Whether a page of the web asks for a file of this computer. The engine refuses that in the
    /// page's own place, but not where the page asks for another one.
    static bool isForbiddenFile(const OrvuWebView& self, const NavigationAction& action) {
        const auto isFile = [](const std::optional<Url>& url) {
            return url && lowercased(url->scheme()) == "file";
        };
        return isFile(action.request.url) && !isFile(self.url_);
    }
    static gboolean contextMenu(WebKitWebView*, WebKitContextMenu* menu, WebKitHitTestResult* hit,
                                gpointer data) {
        offerNewTab(menu, hit, [view = std::weak_ptr{self(data).self_}](const Url& link) {
            const OrvuWebView* const alive = living(view);
            if (!alive || !alive->delegate_) return;
            alive->delegate_->createWebView({{link}, NavigationType::linkActivated, false, 0});
        });
        return FALSE;
    }
    static gboolean permissionRequest(WebKitWebView*, WebKitPermissionRequest* request,
                                      gpointer data) {
        // The page that asks is the one that stands, whatever is loading over it.
        const auto host = self(data).page_ ? self(data).page_->host() : std::nullopt;
        auto capture = mediaCaptureRequest(request, host.value_or(""));
        if (capture && self(data).delegate_) {
            self(data).delegate_->requestMediaCapture(std::move(*capture));
        } else {
            webkit_permission_request_deny(request);
        }
        return TRUE;
    }
    static gboolean enterFullscreen(WebKitWebView*, gpointer data) {
        self(data).fullscreen_.emit(true);
        return FALSE;
    }
    static gboolean leaveFullscreen(WebKitWebView*, gpointer data) {
        self(data).fullscreen_.emit(false);
        return FALSE;
    }
    static void processTerminated(WebKitWebView*, WebKitWebProcessTerminationReason reason,
                                  gpointer data) {
        self(data).processTerminated(reason);
    }
    // For its swipes the engine takes a picture of the page before each navigation, and comes to
    // grief over a view that stands in no window.
    static void mapped(WebKitWebView* view, gpointer) {
        webkit_settings_set_enable_back_forward_navigation_gestures(
            webkit_web_view_get_settings(view), TRUE);
    }
    static void unmapped(WebKitWebView* view, gpointer) {
        webkit_settings_set_enable_back_forward_navigation_gestures(
            webkit_web_view_get_settings(view), FALSE);
    }
    static void focusEntered(GtkEventControllerFocus* focus, gpointer data) {
        // A window that becomes active, from under a menu too, has its focus already and brings
        // it along: that is no choice of this page. A focus that moves comes before the window
        // knows of it.
        GtkWidget* const widget = gtk_event_controller_get_widget(GTK_EVENT_CONTROLLER(focus));
        if (gtk_root_get_focus(gtk_widget_get_root(widget)) == widget) return;
        if (self(data).reportsFocus_) self(data).onFocus();
    }
};

OrvuWebView::OrvuWebView(std::shared_ptr<WebKitShared> shared, MainLoop& loop)
    : shared_(std::move(shared)), loop_(loop) {}

OrvuWebView::~OrvuWebView() {
    if (!view_) return;
    Events::disconnect(view(), this);
    finder_.reset();
    GtkWidget* const parent = gtk_widget_get_parent(GTK_WIDGET(view()));
    if (parent && GTK_IS_BOX(parent)) gtk_box_remove(GTK_BOX(parent), GTK_WIDGET(view()));
    webkit_web_view_terminate_web_process(view());
}

GtkWidget* OrvuWebView::widget() {
    make();
    return GTK_WIDGET(view());
}

void OrvuWebView::make() {
    if (view_) return;
    starter_.cancel();
    const auto settings = makeSettings(*shared_);
    view_ = GObjectPointer<WebKitWebView>::adopt(WEBKIT_WEB_VIEW(
        g_object_new(WEBKIT_TYPE_WEB_VIEW, "network-session", shared_->session->get(), "settings",
                     settings.get(), "user-content-manager", shared_->content.get(), nullptr)));
    webkit_web_view_set_zoom_level(view(), zoom_);
    Events::connect(view(), this);
    finder_.emplace(view());
    if (const auto url = std::exchange(pending_, std::nullopt)) load(*url);
}

void OrvuWebView::load(const Url& url) {
    if (view_) {
        webkit_web_view_load_uri(view(), url.absoluteString().c_str());
        return;
    }
    pending_ = url;
    starter_ = loop_.whenIdle([this] { make(); });
    url_ = url;
    emit({WebViewProperty::url, WebViewProperty::isLoading});
}

void OrvuWebView::stopLoading() {
    if (view_) return webkit_web_view_stop_loading(view());
    starter_.cancel();
    if (!std::exchange(pending_, std::nullopt)) return;
    url_.reset();
    emit({WebViewProperty::url, WebViewProperty::isLoading});
}

void OrvuWebView::reload() {
    if (view_) webkit_web_view_reload(view());
}

void OrvuWebView::goBack() {
    if (view_) webkit_web_view_go_back(view());
}

void OrvuWebView::goForward() {
    if (view_) webkit_web_view_go_forward(view());
}

bool OrvuWebView::canGoBack() const { return view_ && webkit_web_view_can_go_back(view()); }

bool OrvuWebView::canGoForward() const { return view_ && webkit_web_view_can_go_forward(view()); }

double OrvuWebView::estimatedProgress() const {
    return view_ ? webkit_web_view_get_estimated_load_progress(view()) : 0;
}

bool OrvuWebView::isLoading() const {
    return view_ ? webkit_web_view_is_loading(view()) != FALSE : pending_.has_value();
}

void OrvuWebView::setPageZoom(double zoom) {
    zoom_ = zoom;
    if (view_) webkit_web_view_set_zoom_level(view(), zoom);
}

Future<ScriptResult> OrvuWebView::evaluateJavaScript(std::string script) {
    make();
    const Promise<ScriptResult> promise;
    runPageScript(view(), script,
                  [promise](ScriptResult result) { promise.resolve(std::move(result)); });
    return promise.future();
}

Future<bool> OrvuWebView::find(std::string text, FindConfiguration configuration) {
    if (!view_) {  // nothing was loaded: there is nothing to find, and no need of a process
        const Promise<bool> failed;
        failed.resolve(false);
        return failed.future();
    }
    return finder_->find(text, configuration);
}

void OrvuWebView::stopCapture(CaptureKind kind) {
    if (view_) orvu::stopCapture(view(), kind);
}

std::shared_ptr<WebsiteData> OrvuWebView::websiteData() {
    return std::make_shared<SessionWebsiteData>(shared_->session);
}

void OrvuWebView::emit(std::initializer_list<WebViewProperty> properties) {
    const std::weak_ptr alive{self_};  // whoever hears of one change may end this view
    for (const auto property : properties) {
        if (living(alive)) changed_.emit(property);
    }
}

void OrvuWebView::uriChanged(std::optional<Url> uri) {
    // After a crash the engine has no address any more; the page keeps its own.
    if (!uri) return setUrl(page_);
    if (!isLoading()) page_ = uri;  // a change within the document
    setUrl(std::move(uri));
}

void OrvuWebView::setUrl(std::optional<Url> url) {
    if (url_ == url) return;
    url_ = std::move(url);
    changed_.emit(WebViewProperty::url);
}

void OrvuWebView::setTitle(std::string title) {
    if (title_ == title) return;
    title_ = std::move(title);
    changed_.emit(WebViewProperty::title);
}

void OrvuWebView::setSecure(bool secure) {
    if (secure_ == secure) return;
    secure_ = secure;
    changed_.emit(WebViewProperty::hasOnlySecureContent);
}

void OrvuWebView::loadChanged(WebKitLoadEvent event) {
    switch (event) {
        case WEBKIT_LOAD_STARTED:
            ++loadNumber_;
            failed_ = committed_ = false;
            break;
        case WEBKIT_LOAD_COMMITTED: {
            committed_ = true;
            finder_->pageUnloaded();
            page_ = url_;
            if (delegate_) delegate_->documentUnloaded();
            GTlsCertificate* certificate = nullptr;
            GTlsCertificateFlags errors{};
            setSecure(webkit_web_view_get_tls_info(view(), &certificate, &errors) != FALSE);
            break;
        }
        case WEBKIT_LOAD_FINISHED:
            // This event also ends loads that failed, were stopped or were replaced.
            if (!committed_ || failed_) break;
            page_ = url_;
            finish();
            break;
        case WEBKIT_LOAD_REDIRECTED:
            break;
    }
}

void OrvuWebView::finish() {
    // The title often arrives after the load ended; the document has it already.
    runPageScript(view(), "document.title",
                  [weak = std::weak_ptr{self_}, number = loadNumber_](const ScriptResult& result) {
                      OrvuWebView* const self = living(weak);
                      if (!self || self->loadNumber_ != number) return;
                      if (result.kind == ScriptResult::Kind::text) self->setTitle(result.text);
                      // Whoever heard of the title may have closed the tab.
                      if (living(weak) && self->delegate_) self->delegate_->didFinish();
                  });
}

void OrvuWebView::processTerminated(WebKitWebProcessTerminationReason reason) {
    if (delegate_) delegate_->documentUnloaded();
    if (reason == WEBKIT_WEB_PROCESS_TERMINATED_BY_API) return;
    finder_->pageUnloaded();
    // Within the signal the engine still knows the address.
    if (crashReload_.shouldReload(url_)) webkit_web_view_reload(view());
}

}  // namespace orvu
