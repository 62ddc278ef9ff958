#include "platform/linux/web/OrvuWebView.h"

#include "foundation/text/Text.h"
#include "foundation/text/Translation.h"
#include "platform/NavigationGate.h"
#include "platform/SourceAddress.h"
#include "platform/linux/web/CapturePermission.h"
#include "platform/linux/web/LoadErrors.h"
#include "platform/linux/web/PageDownload.h"
#include "platform/linux/web/PageScript.h"
#include "platform/linux/web/SavedPage.h"
#include "platform/linux/web/SessionWebsiteData.h"

#include <cstring>
#include <utility>

namespace orvu {
namespace {

/// A title is cut where it enters: a page can make one of any size, and as often as it likes.
constexpr std::size_t titleLimit = 1000;  // characters

/// Whether an unconnected computer explains a failure.
bool isNetworkCause(LoadFailureCause cause) {
    return cause == LoadFailureCause::noSuchName || cause == LoadFailureCause::unreachable ||
           cause == LoadFailureCause::timedOut;
}

/// Whether the page that was just committed came over a connection to whom it says it is.
bool cameSecurely(WebKitWebView* view) {
    GTlsCertificate* certificate = nullptr;
    GTlsCertificateFlags errors{};
    return webkit_web_view_get_tls_info(view, &certificate, &errors) != FALSE && errors == 0;
}

/// Under which the engine's view knows the one that it belongs to.
constexpr const char* dataKey = "orvu-web-view";

/// The settings of a new view. Each view has its own, because one of them follows the view.
GObjectPointer<WebKitSettings> makeSettings(const WebKitShared& shared) {
    auto settings = GObjectPointer<WebKitSettings>::adopt(webkit_settings_new());
    webkit_settings_set_enable_fullscreen(settings.get(), shared.elementFullscreen);
    webkit_settings_set_enable_developer_extras(settings.get(), TRUE);
    // How often scripts may open something is the tab's decision: it has to hear of it.
    webkit_settings_set_javascript_can_open_windows_automatically(settings.get(), TRUE);
    if (!shared.userAgent.empty()) {
        webkit_settings_set_user_agent(settings.get(), shared.userAgent.c_str());
    }
    return settings;
}

}  // namespace

OrvuWebView::OrvuWebView(std::shared_ptr<WebKitShared> shared, MainLoop& loop)
    : shared_(std::move(shared)),
      loop_(loop),
      loads_(loop_, {.stop =
                         [this] {
                             stopLoading();
                             awaitsNetwork_ = address_.unshown().has_value();
                         },
                     .changed = [this] { changed_.emit(WebViewProperty::failure); }}),
      networkWatch_(shared_->network.connectCameBack([this] { networkCameBack(); })) {}

OrvuWebView::~OrvuWebView() {
    if (!view_) return;
    Events::disconnect(view(), this);
    g_object_set_data(G_OBJECT(view()), dataKey, nullptr);
    webkit_web_inspector_close(webkit_web_view_get_inspector(view()));
    finder_.reset();  // which would hear of the process' end as of a search without a match
    leaving_.reset();
    webkit_web_view_terminate_web_process(view());  // it could ask the next thing
    dialogs_.cancelAll();
    menu_.reset();
    printing_.reset();
    engineDialogs_.reset();
    swipes_.reset();
    GtkWidget* const parent = gtk_widget_get_parent(GTK_WIDGET(view()));
    if (parent && GTK_IS_BOX(parent)) gtk_box_remove(GTK_BOX(parent), GTK_WIDGET(view()));
}

GtkWidget* OrvuWebView::widget() {
    hurry();
    make();
    return GTK_WIDGET(view());
}

void OrvuWebView::cameIntoWindow() {
    shared_->inWindow = self_;
    setHoveredLink(std::nullopt);  // the pointer was somewhere else meanwhile
}

void OrvuWebView::make() {
    if (view_) return;
    starter_.cancel();
    const auto settings = makeSettings(*shared_);
    view_ = GObjectPointer<WebKitWebView>::adopt(WEBKIT_WEB_VIEW(
        g_object_new(WEBKIT_TYPE_WEB_VIEW, "network-session", shared_->session->get(), "settings",
                     settings.get(), "user-content-manager", shared_->content.get(), nullptr)));
    webkit_web_view_set_zoom_level(view(), zoom_);
    g_object_set_data(G_OBJECT(view()), dataKey, this);
    Events::connect(view(), this);
    swipes_.emplace(view(), loop_);
    finder_.emplace(view());
    addDialogs();
    addMenu();
    if (const auto request = std::exchange(pending_, std::nullopt)) beginInView(*request);
}

/// A page that is in no window yet measures what the others of its window measure: many lay
/// themselves out once, and would do so for a window without a size.
void OrvuWebView::takeSize() {
    const OrvuWebView* const seen = living(shared_->inWindow);
    GtkWidget* const widget = GTK_WIDGET(view());
    if (!seen || !seen->view_ || gtk_widget_get_mapped(widget)) return;
    const int width = gtk_widget_get_width(GTK_WIDGET(seen->view()));
    const int height = gtk_widget_get_height(GTK_WIDGET(seen->view()));
    if (width <= 0 || height <= 0) return;
    // The toolkit gives no size to what is hidden; this way it isn't, and isn't shown either.
    const gboolean visible = gtk_widget_get_visible(widget);
    gtk_widget_set_child_visible(widget, FALSE);
    gtk_widget_set_visible(widget, TRUE);
    gtk_widget_measure(widget, GTK_ORIENTATION_HORIZONTAL, -1, nullptr, nullptr, nullptr, nullptr);
    gtk_widget_allocate(widget, width, height, -1, nullptr);
    gtk_widget_set_visible(widget, visible);
    gtk_widget_set_child_visible(widget, TRUE);
}

void OrvuWebView::addDialogs() {
    const auto host = [this] {
        const auto& document = address_.document();
        return (document ? document->host() : std::nullopt).value_or("");
    };
    // A server's question may come before the engine says that the load has started.
    const auto isAboutToChange = [this] {
        return isLoading() && (!committed_ || leaving_->isPersonal());
    };
    leaving_.emplace(view(), dialogs_, loop_);
    engineDialogs_.emplace(view(), dialogs_, *leaving_, loop_,
                           EngineDialogs::Page{host, isAboutToChange});
    printing_.emplace(view(), loop_);
}

void OrvuWebView::addMenu() {
    menu_.emplace(
        view(), *this, loop_,
        EngineMenu::Handlers{
            .mayOpen =
                [this](const Url& url) {
                    return NavigationGate::mayOpenElsewhere(url, address_.document());
                },
            .open =
                [this](const UrlRequest& request) {
                    if (delegate_)
                        delegate_->createWebView({request, NavigationType::linkActivated});
                },
            .saves = [this] { menuDownloads_ = true; },
            .choose = [this](const PageMenuChoice& choice) { menuChosen_.emit(choice); },
            .learnsWords = webkit_network_session_is_ephemeral(shared_->session->get()) == FALSE,
        });
}

/// The person wants something else of the page than to answer its dialogs, which would hold it up.
void OrvuWebView::beginNavigation() {
    dialogs_.cancelAll();
    loads_.personLeads();
    if (leaving_) leaving_->personNavigates();
}

OrvuWebView* OrvuWebView::living(const std::weak_ptr<OrvuWebView*>& handle) {
    const auto live = handle.lock();
    return live ? *live : nullptr;
}

std::optional<Url> OrvuWebView::engineUrl() const {
    const char* const uri = webkit_web_view_get_uri(view());
    return uri ? Url::parse(uri) : std::nullopt;
}

OrvuWebView* OrvuWebView::of(WebKitWebView* view) {
    return static_cast<OrvuWebView*>(g_object_get_data(G_OBJECT(view), dataKey));
}

void OrvuWebView::downloadBegan(std::unique_ptr<Download> download, WebKitDownload* engineDownload,
                                std::shared_ptr<const DownloadTaker> taker) {
    const auto url =
        Url::parse(webkit_uri_request_get_uri(webkit_download_get_request(engineDownload)));
    const auto cause = std::exchange(menuDownloads_, false) ? DownloadCause::person
                       : url                                ? causes_.cause(*url)
                                                            : DownloadCause::page;
    auto request = std::make_unique<PageDownload>(std::move(download), engineDownload, view(),
                                                  address_.document(), cause, std::move(taker));
    if (delegate_) {
        delegate_->requestDownload(std::move(request));
    } else {
        request->begin();
    }
}

/// A load of the program's own, and where a server sends it on to, is the person's wish.
void OrvuWebView::noteCause(NavigationAction& action, bool isRedirect) {
    const bool isAsked = ownLoad_ != NavigationType::other ||
                         action.request.url == engineUrl();  // a page's may come between
    const bool begins = ownLoad_ == action.navigationType && !isRedirect && isAsked;
    if (begins) {
        overtaken_.reset();
        ownLoad_.reset();
        ownLoadRuns_ = true;
    }
    const bool isOwn = begins || (isRedirect && ownLoadRuns_);
    const bool clicked = action.buttonNumber != 0;  // a script has no button
    const auto cause = isOwn || (action.byPerson && clicked) ? DownloadCause::person
                       : action.byPerson                     ? DownloadCause::gesture
                                                             : DownloadCause::page;
    action.byPerson = action.byPerson || isOwn;
    if (action.request.url) causes_.add(*action.request.url, cause);
}

void OrvuWebView::load(const Url& url) {
    // A source that nobody holds any more: then the page itself.
    const auto page = pageOfSource(url);
    if (page && source_.address != url.absoluteString()) return load(*page);
    ownLoad_ = NavigationType::other;
    begin({url});
}

void OrvuWebView::loadInTurn(const Url& url, std::size_t turn) {
    if (view_ || pending_) return load(url);
    if (const auto page = pageOfSource(url)) return loadInTurn(*page, turn);
    ownLoad_ = NavigationType::other;
    pending_ = UrlRequest{url};
    waits_ = true;
    place_ = shared_->queue->wait(turn, [this] {
        waits_ = false;
        make();
    });
    tellUrl(address_.asked(url));
}

/// What waits for its turn begins now.
void OrvuWebView::hurry() {
    if (std::exchange(waits_, false)) place_ = shared_->queue->goFirst();
}

void OrvuWebView::begin(const UrlRequest& request) {
    waits_ = false;
    place_ = shared_->queue->goFirst();
    if (view_) return beginInView(request);
    const std::weak_ptr alive{self_};
    pending_ = request;
    starter_ = loop_.whenIdle([this] { make(); });
    tellUrl(address_.asked(*request.url));
    if (living(alive)) changed_.emit(WebViewProperty::isLoading);
}

void OrvuWebView::beginInView(const UrlRequest& request) {
    awaitsNetwork_ = false;
    const std::weak_ptr alive{self_};
    loads_.dismiss();
    if (living(alive)) beginNavigation();
    if (!living(alive)) return;
    tellUrl(address_.asked(*request.url));
    if (living(alive)) startEngine(request);
}

/// Others need not wait for the present load any more.
void OrvuWebView::loadIsOver() {
    if (waits_) return;
    place_.reset();
    if (!view_) return;
    for (const auto& run : std::exchange(afterLoad_, {})) run();
}

void OrvuWebView::endPlaceWhenPainted() {
    if (!place_ || !place_->holdsUp()) return;
    static constexpr const char* twoFrames =
        "await new Promise(painted => requestAnimationFrame(() => requestAnimationFrame(painted)))";
    runAsyncPageScript(view(), twoFrames, [weak = std::weak_ptr{self_}, number = loadNumber_] {
        OrvuWebView* const self = living(weak);
        if (self && self->loadNumber_ == number) self->loadIsOver();
    });
}

/// The engine may have asked about a navigation before it heard that another load took its place.
bool OrvuWebView::overtakes(const NavigationAction& action) {
    if (!overtaken_ || action.request.url != *overtaken_) return false;
    overtaken_.reset();
    return true;
}

/// In the name of the page that asked for it, if one did.
void OrvuWebView::loadAgain(const Url& url) {
    if (!initiated_) return load(url);
    begin({url, initiated_->initiator()});
}

void OrvuWebView::startEngine(const UrlRequest& request) {
    if (initiated_ && initiated_->startsAnyMoment()) {
        pending_ = request;
        starter_ = loop_.after(startWait, [this] { takeOver(); });
        return;
    }
    takeSize();
    pending_.reset();
    starter_.cancel();
    overtaken_.reset();
    if (initiated_) {
        // Where a document is on its way elsewhere, the engine might let that come after all.
        const std::weak_ptr alive{self_};
        if (initiated_->target() != *request.url) overtaken_ = initiated_->target();
        webkit_web_view_stop_loading(view());
        if (!living(alive)) return;
    }
    initiated_ =
        request.initiator ? InitiatedLoad::of(*request.url, *request.initiator) : std::nullopt;
    if (!initiated_) {
        return webkit_web_view_load_uri(view(), request.url->absoluteString().c_str());
    }
    committed_ = false;
    const auto& place = initiated_->place();
    webkit_web_view_load_html(view(), initiated_->document().c_str(),
                              place ? place->absoluteString().c_str() : nullptr);
}

/// What was asked for while the target of an initiated load was about to start. The engine isn't
/// told of it from within its own signals.
void OrvuWebView::takeOver() {
    if (initiated_) initiated_->giveUp();
    if (const auto request = std::exchange(pending_, std::nullopt)) return startEngine(*request);
    webkit_web_view_stop_loading(view());
}

void OrvuWebView::stopLoading() {
    awaitsNetwork_ = false;
    dialogs_.cancelAll();
    if (view_) {
        pending_.reset();
        place_.reset();
        const bool ahead = initiated_ && initiated_->isAhead();
        if (ahead) initiated_->giveUp();
        webkit_web_view_stop_loading(view());
        if (ahead) changed_.emit(WebViewProperty::isLoading);
        return;
    }
    if (waits_) return;  // nothing is on its way yet
    starter_.cancel();
    loadIsOver();
    if (std::exchange(pending_, std::nullopt)) changed_.emit(WebViewProperty::isLoading);
}

void OrvuWebView::reload() {
    // The engine has nothing to load again where no page ever stood.
    if (const auto url = address_.unshown()) return loadAgain(*url);
    if (!view_) return;
    beginNavigation();
    ownLoad_ = NavigationType::reload;
    webkit_web_view_reload(view());
}

void OrvuWebView::goBack() {
    if (!view_) return;
    beginNavigation();
    ownLoad_ = NavigationType::backForward;
    webkit_web_view_go_back(view());
}

void OrvuWebView::goForward() {
    if (!view_) return;
    beginNavigation();
    ownLoad_ = NavigationType::backForward;
    webkit_web_view_go_forward(view());
}

bool OrvuWebView::canGoBack() const { return view_ && webkit_web_view_can_go_back(view()); }

bool OrvuWebView::canGoForward() const { return view_ && webkit_web_view_can_go_forward(view()); }

double OrvuWebView::estimatedProgress() const {
    if (!view_ || (initiated_ && initiated_->isAhead())) return 0;
    return webkit_web_view_get_estimated_load_progress(view());
}

bool OrvuWebView::isLoading() const {
    if (!view_) return pending_ && !waits_;
    const bool engineLoads = webkit_web_view_is_loading(view()) != FALSE;
    return initiated_ ? initiated_->isLoading(engineLoads) : engineLoads;
}

void OrvuWebView::showInspector() {
    if (view_) webkit_web_inspector_show(webkit_web_view_get_inspector(view()));
}

void OrvuWebView::setPageZoom(double zoom) {
    zoom_ = zoom;
    if (view_) webkit_web_view_set_zoom_level(view(), zoom);
}

Future<ScriptResult> OrvuWebView::evaluateJavaScript(std::string script) {
    const bool isYetToCome = pending_ || (isLoading() && !address_.document());
    hurry();
    make();
    const Promise<ScriptResult> promise;
    auto run = [this, promise, text = std::move(script)] {
        runPageScript(view(), text,
                      [promise](ScriptResult result) { promise.resolve(std::move(result)); });
    };
    if (isYetToCome) {
        afterLoad_.emplace_back(std::move(run));
    } else {
        run();
    }
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

Future<bool> OrvuWebView::mayClose() {
    if (view_ && address_.document()) return leaving_->mayGo();
    const Promise<bool> yes;
    yes.resolve(true);
    return yes.future();
}

void OrvuWebView::print() {
    if (view_ && address_.document()) printing_->print();
}

void OrvuWebView::savePage() {
    if (!view_ || !address_.document() || showsSource()) return;
    if (SavedPage::canSave(view())) {
        if (const auto& take = *shared_->taker) {
            take(std::make_unique<SavedPage>(view(), title_, address_.document()->host()));
        }
        return;
    }
    menuDownloads_ = true;
    const char* const uri = webkit_web_view_get_uri(view());
    if (uri) g_object_unref(webkit_web_view_download_uri(view(), uri));
}

Future<std::optional<std::string>> OrvuWebView::source() {
    const Promise<std::optional<std::string>> promise;
    if (view_ && address_.document()) {
        readPageSource(view(), [promise](auto text) { promise.resolve(std::move(text)); });
    } else {
        promise.resolve(std::nullopt);
    }
    return promise.future();
}

bool OrvuWebView::showsSource() const {
    const auto& document = address_.document();
    return document && document->absoluteString() == source_.address;
}

void OrvuWebView::showSource(const Url& page, std::string text) {
    const auto url = sourceAddress(page);
    if (!url) return;
    source_ = {url->absoluteString(), std::move(text),
               tr("Source of {1}", page.host().value_or("") + page.path())};
    load(*url);
}

/// Whether the page that stands is asked first, and the decision made later.
bool OrvuWebView::asksBefore(WebKitPolicyDecision* decision) {
    const auto& document = address_.document();
    return document && leaving_->holds(WEBKIT_RESPONSE_POLICY_DECISION(decision),
                                       document->host().value_or(""));
}

void OrvuWebView::emit(std::initializer_list<WebViewProperty> properties) {
    const std::weak_ptr alive{self_};  // whoever hears of one change may end this view
    for (const auto property : properties) {
        if (living(alive)) changed_.emit(property);
    }
}

void OrvuWebView::engineMoved() {
    const char* const uri = webkit_web_view_get_uri(view());
    if (uri && flood_.add(std::strlen(uri), loop_.now())) {
        // Not from within the engine's own signal.
        if (!std::exchange(floods_, true)) floodStop_ = loop_.after({}, [this] { stopFlood(); });
        return;
    }
    uriChanged(engineUrl());
}

/// Ends a page that would leave the window no time for its person.
void OrvuWebView::stopFlood() {
    floods_ = false;
    const auto url = address_.url();
    const std::weak_ptr alive{self_};
    webkit_web_view_terminate_web_process(view());
    if (living(alive) && url) loads_.failed({LoadFailureCause::addressFlood, *url, std::nullopt});
}

void OrvuWebView::uriChanged(const std::optional<Url>& uri) {
    if (initiated_) return;  // the page that leads there
    tellUrl(address_.engineMoved(uri, isLoading()));
}

void OrvuWebView::tellUrl(bool changed) {
    if (changed) changed_.emit(WebViewProperty::url);
}

void OrvuWebView::setTitle(std::string_view title) {
    const std::string_view told = title.empty() && showsSource() ? source_.title : title;
    const std::string_view kept = firstCharacters(wholeCodePoints(told, titleBytes), titleLimit);
    if (title_ == kept) return;
    title_ = kept;
    changed_.emit(WebViewProperty::title);
}

void OrvuWebView::setSecure(bool secure) {
    if (secure_ == secure) return;
    secure_ = secure;
    changed_.emit(WebViewProperty::hasOnlySecureContent);
}

void OrvuWebView::setHoveredLink(std::optional<Url> link) {
    if (hoveredLink_ == link) return;
    hoveredLink_ = std::move(link);
    changed_.emit(WebViewProperty::hoveredLink);
}

void OrvuWebView::setFullscreen(bool on) {
    fillsScreen_ = on;
    fullscreen_.emit(on);
}

/// The engine would leave the screen to the document that comes, under the name of the one that
/// asked for it. It gives up when the window doesn't fill the screen any more.
void OrvuWebView::takeScreenBack() {
    if (!fillsScreen_) return;
    if (auto* const window = gtk_widget_get_root(widget())) {
        gtk_window_unfullscreen(GTK_WINDOW(window));
    }
    setFullscreen(false);
}

void OrvuWebView::setCapture(ActiveCapture capture) {
    if (capture_ == capture) return;
    capture_ = capture;
    changed_.emit(WebViewProperty::activeCapture);
}

void OrvuWebView::loadChanged(WebKitLoadEvent event) {
    switch (event) {
        case WEBKIT_LOAD_STARTED:
            if (initiated_ && !targetStarts()) break;
            ++loadNumber_;
            failed_ = committed_ = becomesDownload_ = awaitsNetwork_ = false;
            if (address_.url()) loads_.asked(*address_.url());
            break;
        case WEBKIT_LOAD_COMMITTED:
            if (!initiated_ || initiated_->committed()) documentStands();
            break;
        case WEBKIT_LOAD_FINISHED:
            // This event also ends loads that failed, were stopped or were replaced.
            if (!isLoading()) {
                loads_.answered();
                loadIsOver();
            }
            if (committed_ && !failed_) finish();
            break;
        case WEBKIT_LOAD_REDIRECTED:
            if (address_.url()) loads_.redirected(*address_.url());
            break;
    }
}

/// Whether a load that started is the target of the initiated one, and nothing else is wanted now.
bool OrvuWebView::targetStarts() {
    const bool starts = initiated_->started();
    if (givesWay()) return false;
    if (initiated_->isGivenUp()) starter_ = loop_.whenIdle([this] { takeOver(); });
    return starts;
}

/// Whether the present load only ends or starts for the one that waits for it.
bool OrvuWebView::givesWay() {
    if (pending_) starter_ = loop_.whenIdle([this] { takeOver(); });
    return pending_.has_value();
}

void OrvuWebView::documentStands() {
    committed_ = true;
    loads_.answered();
    ownLoadRuns_ = false;
    if (std::exchange(initiated_, std::nullopt)) {
        const std::weak_ptr alive{self_};
        uriChanged(engineUrl());
        if (!living(alive)) return;
    }
    finder_->pageUnloaded();
    address_.committed();
    documentGone();
    endPlaceWhenPainted();
    setSecure(cameSecurely(view()));
}

void OrvuWebView::documentGone() {
    const std::weak_ptr alive{self_};
    setHoveredLink(std::nullopt);
    if (!living(alive)) return;
    takeScreenBack();
    if (!living(alive)) return;
    leaving_->documentGone();
    printing_->documentGone();
    dialogs_.documentGone();
    if (delegate_) delegate_->documentUnloaded();
}

void OrvuWebView::loadFailed(const char* uri, const GError* error) {
    failed_ = true;
    leaving_->loadEnded();
    ownLoadRuns_ = false;
    if (initiated_) initiated_->failed();
    if (givesWay()) return;
    loadIsOver();
    const auto cause = loadFailureCause(error);
    // A load that was stopped has no cause; the watch stops one that gets no answer.
    if (cause) awaitsNetwork_ = address_.unshown() && cause != LoadFailureCause::secureConnection;
    const std::weak_ptr alive{self_};
    if (!becomesDownload_) noteFailure(cause, Url::parse(uri ? uri : ""));
    if (living(alive) && becomesDownload_) tellUrl(address_.becameDownload());
}

void OrvuWebView::loadFailedInTls(const char* uri, GTlsCertificate* certificate,
                                  GTlsCertificateFlags flags) {
    failed_ = true;
    leaving_->loadEnded();
    if (initiated_) initiated_->failed();
    const auto url = Url::parse(uri ? uri : "");
    if (givesWay()) return;
    loadIsOver();
    if (!url) return;
    refused_ = GObjectPointer<GTlsCertificate>::retain(certificate);
    loads_.failed({LoadFailureCause::certificate, *url, certificateFault(flags)});
}

void OrvuWebView::noteFailure(const std::optional<LoadFailureCause>& cause,
                              const std::optional<Url>& url) {
    if (!cause || !url) return;
    const bool offline = isNetworkCause(*cause) && !shared_->network.isAvailable();
    loads_.failed({offline ? LoadFailureCause::noNetwork : *cause, *url, std::nullopt});
}

/// A page, or whoever asked for a load, wants an address that the engine has no business with.
void OrvuWebView::refusedAddress(const Url& url) {
    loads_.failed({LoadFailureCause::otherProgram, url, std::nullopt});
}

void OrvuWebView::loadWithRefusedCertificate() {
    const auto failure = loads_.failure();
    const auto host = failure ? failure->url.host() : std::nullopt;
    if (!host || !refused_ || failure->cause != LoadFailureCause::certificate) return;
    webkit_network_session_allow_tls_certificate_for_host(shared_->session->get(), refused_.get(),
                                                          host->c_str());
    loadAgain(failure->url);
}

/// With the network all come back that failed with it: those that nobody sees in turn.
void OrvuWebView::networkCameBack() {
    const auto url = address_.unshown();
    if (!std::exchange(awaitsNetwork_, false) || !url) return;
    if (gtk_widget_get_mapped(GTK_WIDGET(view()))) return loadAgain(*url);
    place_ = shared_->queue->wait(0, [this] { loadInItsTurn(); });
}

void OrvuWebView::loadInItsTurn() {
    UrlRequest request{address_.unshown()};
    if (!request.url) return place_.reset();
    if (initiated_) request.initiator = initiated_->initiator();
    ownLoad_ = NavigationType::other;
    beginInView(request);
}

void OrvuWebView::finish() {
    // The title often arrives after the load ended; the document has it already.
    runPageScript(view(), "document.title.slice(0, 16000)",
                  [weak = std::weak_ptr{self_}, number = loadNumber_](const ScriptResult& result) {
                      OrvuWebView* const self = living(weak);
                      if (!self || self->loadNumber_ != number) return;
                      if (result.kind == ScriptResult::Kind::text) self->setTitle(result.text);
                      // Whoever heard of the title may have closed the tab.
                      if (living(weak) && self->delegate_) self->delegate_->didFinish();
                  });
}

void OrvuWebView::processTerminated(WebKitWebProcessTerminationReason reason) {
    const std::weak_ptr alive{self_};
    setCapture({});
    if (living(alive)) documentGone();
    if (!living(alive) || reason == WEBKIT_WEB_PROCESS_TERMINATED_BY_API) return;
    finder_->pageUnloaded();
    const auto initiated = initiated_;
    if (initiated_) initiated_->giveUp();
    if (givesWay()) return;
    loadIsOver();
    const auto url = address_.url();
    if (crashReload_.shouldReload(url)) {
        if (initiated) return begin({url, initiated->initiator()});
        // Within the signal the engine still knows the address.
        return webkit_web_view_reload(view());
    }
    if (url) loads_.failed({LoadFailureCause::processEnded, *url, std::nullopt});
}

}  // namespace orvu
