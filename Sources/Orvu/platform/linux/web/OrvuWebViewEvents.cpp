#include "platform/NavigationGate.h"
#include "platform/linux/web/CapturePermission.h"
#include "platform/linux/web/OrvuWebView.h"
#include "platform/linux/web/PolicyTranslation.h"

#include <cstring>
#include <utility>

namespace orvu {
struct OrvuWebView::Events::Handlers {
    static OrvuWebView& self(gpointer data) { return *static_cast<OrvuWebView*>(data); }

    static void uriChanged(WebKitWebView*, GParamSpec*, gpointer data) { self(data).engineMoved(); }
    static void titleChanged(WebKitWebView* view, GParamSpec*, gpointer data) {
        const char* const title = webkit_web_view_get_title(view);
        self(data).setTitle(title ? std::string_view{title, strnlen(title, titleBytes + 1)} : "");
    }
    static void progressChanged(WebKitWebView*, GParamSpec*, gpointer data) {
        self(data).changed_.emit(WebViewProperty::estimatedProgress);
    }
    static void loadingChanged(WebKitWebView*, GParamSpec*, gpointer data) {
        // Also where the document only moved within itself.
        if (!self(data).isLoading()) self(data).leaving_->loadEnded();
        self(data).changed_.emit(WebViewProperty::isLoading);
    }
    static void captureChanged(WebKitWebView* view, GParamSpec*, gpointer data) {
        self(data).setCapture(orvu::activeCapture(view));
    }
    static void listChanged(WebKitBackForwardList*, WebKitBackForwardListItem*, gpointer,
                            gpointer data) {
        self(data).emit({WebViewProperty::canGoBack, WebViewProperty::canGoForward});
    }
    static void loadChanged(WebKitWebView*, WebKitLoadEvent event, gpointer data) {
        self(data).loadChanged(event);
    }
    static gboolean loadFailed(WebKitWebView*, WebKitLoadEvent, const char* uri, GError* error,
                               gpointer data) {
        self(data).loadFailed(uri, error);
        return TRUE;  // no page of the engine's own: the previous one stays
    }
    static gboolean loadFailedInTls(WebKitWebView*, const char* uri, GTlsCertificate* certificate,
                                    GTlsCertificateFlags flags, gpointer data) {
        self(data).loadFailedInTls(uri, certificate, flags);
        return TRUE;
    }
    static void insecureContent(WebKitWebView*, WebKitInsecureContentEvent, gpointer data) {
        self(data).setSecure(false);
    }
    static void mouseTargetChanged(WebKitWebView*, WebKitHitTestResult* hit, guint, gpointer data) {
        const char* const link = webkit_hit_test_result_get_link_uri(hit);
        self(data).setHoveredLink(link ? Url::parse(link) : std::nullopt);
    }
    static gboolean decidePolicy(WebKitWebView*, WebKitPolicyDecision* decision,
                                 WebKitPolicyDecisionType type, gpointer data) {
        NavigationDelegate* const delegate = self(data).delegate_;
        if (!delegate) return FALSE;
        if (type == WEBKIT_POLICY_DECISION_TYPE_RESPONSE) {
            const auto response = navigationResponse(WEBKIT_RESPONSE_POLICY_DECISION(decision));
            if (delegate->decidePolicy(response) == ResponsePolicy::allow) {
                return static_cast<gboolean>(self(data).asksBefore(decision));
            }
            self(data).becomesDownload_ = response.isForMainFrame;
            webkit_policy_decision_download(decision);
            return TRUE;
        }
        using Navigation = InitiatedLoad::Navigation;
        const std::weak_ptr view{self(data).self_};  // the delegate may end it
        auto* const asked = webkit_navigation_policy_decision_get_navigation_action(
            WEBKIT_NAVIGATION_POLICY_DECISION(decision));
        auto action = navigationAction(asked);
        if (self(data).overtakes(action)) {
            webkit_policy_decision_ignore(decision);
            return TRUE;
        }
        const auto& initiated = self(data).initiated_;
        const auto navigation = initiated ? initiated->navigates() : Navigation::target;
        if (navigation == Navigation::ownDocument) return FALSE;
        self(data).noteCause(action, webkit_navigation_action_is_redirect(asked) != FALSE);
        self(data).leaving_->pageNavigates(action.navigationType == NavigationType::linkActivated);
        const bool goesOn = navigation == Navigation::target && mayGoOn(self(data), type, action) &&
                            delegate->decidePolicy(action) == NavigationPolicy::allow;
        if (!goesOn) webkit_policy_decision_ignore(decision);
        OrvuWebView* const alive = living(view);
        if (alive && alive->initiated_) {
            goesOn ? alive->initiated_->allowed() : alive->initiated_->giveUp();
        }
        return static_cast<gboolean>(!goesOn);
    }
    static GtkWidget* create(WebKitWebView*, WebKitNavigationAction* created, gpointer data) {
        NavigationDelegate* const delegate = self(data).delegate_;
        const auto action = navigationAction(created);
        if (delegate && mayOpenElsewhere(self(data), action)) delegate->createWebView(action);
        return nullptr;
    }
    /// Whether the gate lets a navigation come to the tab's own decision.
    static bool mayGoOn(OrvuWebView& self, WebKitPolicyDecisionType type,
                        const NavigationAction& action) {
        const auto& target = action.request.url;
        const bool isSource = target && target->absoluteString() == self.source_.address;
        if (target && !isSource && !NavigationGate::canLoad(*target)) {
            self.refusedAddress(*target);
            return false;
        }
        constexpr int middleButton = 2;
        const bool clicksElsewhere = action.navigationType == NavigationType::linkActivated &&
                                     (action.commandKey || action.buttonNumber == middleButton);
        const bool elsewhere =
            clicksElsewhere || type == WEBKIT_POLICY_DECISION_TYPE_NEW_WINDOW_ACTION;
        return !elsewhere || mayOpenElsewhere(self, action);
    }
    static bool mayOpenElsewhere(const OrvuWebView& self, const NavigationAction& action) {
        const auto& url = action.request.url;
        return !url || NavigationGate::mayOpenElsewhere(*url, self.address_.document());
    }
    static gboolean permissionRequest(WebKitWebView*, WebKitPermissionRequest* request,
                                      gpointer data) {
        // The page that asks is the one that stands, whatever is loading over it.
        const auto& document = self(data).address_.document();
        const auto host = document ? document->host() : std::nullopt;
        NavigationDelegate* const delegate = self(data).delegate_;
        auto capture = mediaCaptureRequest(request, host.value_or(""));
        if (capture && delegate) {
            delegate->requestMediaCapture(std::move(*capture));
            return TRUE;
        }
        webkit_permission_request_deny(request);
        const auto refused = refusedPermission(request);
        if (refused && delegate) delegate->permissionRefused(*refused);
        return TRUE;
    }
    static gboolean enterFullscreen(WebKitWebView*, gpointer data) {
        self(data).setFullscreen(true);
        return FALSE;
    }
    static gboolean leaveFullscreen(WebKitWebView*, gpointer data) {
        self(data).setFullscreen(false);
        return FALSE;
    }
    static void processTerminated(WebKitWebView*, WebKitWebProcessTerminationReason reason,
                                  gpointer data) {
        self(data).processTerminated(reason);
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

void OrvuWebView::Events::connect(WebKitWebView* view, OrvuWebView* self) {
    const auto on = [&](gpointer object, const char* signal, auto handler) {
        g_signal_connect(object, signal, G_CALLBACK(handler), self);
    };
    on(view, "notify::uri", Handlers::uriChanged);
    on(view, "notify::title", Handlers::titleChanged);
    on(view, "notify::estimated-load-progress", Handlers::progressChanged);
    on(view, "notify::is-loading", Handlers::loadingChanged);
    on(view, "notify::camera-capture-state", Handlers::captureChanged);
    on(view, "notify::microphone-capture-state", Handlers::captureChanged);
    on(webkit_web_view_get_back_forward_list(view), "changed", Handlers::listChanged);
    on(view, "load-changed", Handlers::loadChanged);
    on(view, "load-failed", Handlers::loadFailed);
    on(view, "load-failed-with-tls-errors", Handlers::loadFailedInTls);
    on(view, "insecure-content-detected", Handlers::insecureContent);
    on(view, "mouse-target-changed", Handlers::mouseTargetChanged);
    on(view, "decide-policy", Handlers::decidePolicy);
    on(view, "create", Handlers::create);
    on(view, "permission-request", Handlers::permissionRequest);
    on(view, "enter-fullscreen", Handlers::enterFullscreen);
    on(view, "leave-fullscreen", Handlers::leaveFullscreen);
    on(view, "web-process-terminated", Handlers::processTerminated);
    GtkEventController* const focus = gtk_event_controller_focus_new();
    on(focus, "enter", Handlers::focusEntered);
    gtk_widget_add_controller(GTK_WIDGET(view), focus);
}

void OrvuWebView::Events::disconnect(WebKitWebView* view, OrvuWebView* self) {
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

}  // namespace orvu
