#include "core/BrowserTab.h"

#include "foundation/text/Text.h"
#include "foundation/text/Translation.h"
#include "pagetools/ReaderExtraction.h"
#include "site/icons/PageIcons.h"

#include <utility>

namespace orvu {
namespace {

std::optional<std::string> hostOf(const std::optional<Url>& url) {
    return url ? url->host() : std::nullopt;
}

}  // namespace

BrowserTab::BrowserTab(WebConfiguration& configuration, const UrlRequest& request,
                       const MainLoop& clock, FaviconStore& favicons, SitePermissions& permissions,
                       Persistence persistence)
    : clock_(clock),
      favicons_(favicons),
      persistence_(persistence),
      webView_(configuration.makeWebView()),
      captures_(permissions, persistence),
      downloads_(clock) {
    webView_->setNavigationDelegate(this);
    hasOnlySecureContent_ = webView_->hasOnlySecureContent();
    webView_->connectPropertyChanged(sigc::mem_fun(*this, &BrowserTab::mirror));
    permissions.connectChanged(sigc::mem_fun(*this, &BrowserTab::permissionsChanged));
    if (!request.url) return;
    if (request.turn) {
        webView_->loadInTurn(*request.url, *request.turn);
    } else if (request.initiator) {
        webView_->load(*request.url, *request.initiator);
    } else {
        webView_->load(*request.url);
    }
}

BrowserTab::~BrowserTab() { webView_->setNavigationDelegate(nullptr); }

void BrowserTab::setPinned(bool pinned) { update(isPinned_, pinned); }

void BrowserTab::setGroupID(const std::optional<Uuid>& groupID) { update(groupID_, groupID); }

std::string BrowserTab::title() const {
    if (!pageTitle_.empty()) return pageTitle_;
    std::string site = url_ ? siteName(*url_) : "";
    return site.empty() ? std::string{phrase("New tab")} : site;
}

std::string BrowserTab::host() const { return url_ ? url_->host().value_or("") : ""; }

std::string BrowserTab::path() const {
    std::string path = url_ ? url_->path() : "";
    return path == "/" ? "" : path;
}

bool BrowserTab::isSecure() const {
    return url_ && url_->scheme() == "https" && hasOnlySecureContent_;
}

Task<std::string> BrowserTab::pageText(std::size_t limit) {
    const auto result =
        co_await webView_->evaluateJavaScript("document.body ? document.body.innerText : ''");
    if (result.kind != ScriptResult::Kind::text) co_return "";
    co_return std::string{firstCharacters(result.text, limit)};
}

std::optional<PageQuestion> BrowserTab::question() const {
    if (const auto capture = captures_.question()) {
        return PageQuestion{capture->text(), capture->symbol()};
    }
    return downloads_.question();
}

void BrowserTab::answer(const PageQuestion& asked, PageAnswer answer) {
    if (question() != asked) return;
    const auto self = shared_from_this();  // what begins may close the tab
    const bool changed =
        captures_.question() ? captures_.answer(answer) : downloads_.answer(answer);
    if (changed) changed_.emit();
}

void BrowserTab::stopCapture() {
    const auto self = shared_from_this();  // an observer may close the tab
    captures_.captureStopped(activeCapture_);
    for (const auto kind : SitePermissions::allKinds) {
        if (activeCapture_.has(kind)) webView_->stopCapture(kind);
    }
}

Task<std::optional<ReaderArticle>> BrowserTab::readerArticle() {
    return findArticle(weak_from_this());
}

/// The tab is held only where something is asked of it, so that it can go at the wait.
Task<std::optional<ReaderArticle>> BrowserTab::findArticle(std::weak_ptr<BrowserTab> tab) {
    const auto begin = [](const std::shared_ptr<BrowserTab>& self) {
        return self ? self->url_ : std::nullopt;
    };
    const std::optional<Url> url = begin(tab.lock());
    if (!url) co_return std::nullopt;
    auto answering =
        tab.lock()->webView_->evaluateJavaScript(std::string{ReaderExtraction::script});
    const auto answer = co_await answering;
    const auto self = tab.lock();
    if (!self) co_return std::nullopt;
    const std::string site = self->url_ ? siteName(*self->url_) : "";
    co_return ReaderExtraction::article(answer, {*url, self->title(), site});
}

sigc::connection BrowserTab::connectChanged(const sigc::slot<void()>& slot) {
    return changed_.connect(slot);
}

NavigationPolicy BrowserTab::decidePolicy(const NavigationAction& action) {
    if (action.byPerson) downloads_.personLeads();
    constexpr int middleButton = 2;
    const bool elsewhere = action.commandKey || action.buttonNumber == middleButton;
    if (!elsewhere || action.navigationType != NavigationType::linkActivated) {
        return NavigationPolicy::allow;
    }
    onOpenInNewTab(action.request);
    return NavigationPolicy::cancel;
}

ResponsePolicy BrowserTab::decidePolicy(const NavigationResponse& response) {
    if (!response.isForMainFrame) return ResponsePolicy::allow;
    const bool attachment = lowercased(response.contentDisposition).starts_with("attachment");
    becomesDownload_ = attachment || !response.canShowMimeType;
    return becomesDownload_ ? ResponsePolicy::download : ResponsePolicy::allow;
}

void BrowserTab::didFinish() {
    const auto self = shared_from_this();  // an observer may close the tab
    onVisit(*this);
    loadFavicon();
}

void BrowserTab::loadFavicon() {
    const auto host = hostOf(url_);
    if (!host || !isWebUrl(*url_)) return;
    if (auto image = favicons_.icon(*host, persistence_)) update(favicon_, std::move(image));
    if (url_) tasks_.start(findFavicon(*url_));
}

Task<void> BrowserTab::findFavicon(Url page) {
    auto links = webView_->evaluateJavaScript(std::string{PageIcons::script});
    const auto answer = co_await links;
    const auto candidates = PageIcons::candidates(answer, page);
    for (const Url& candidate : candidates) {
        const auto image = co_await favicons_.fetch(candidate);
        if (!image) continue;
        const auto self = shared_from_this();  // an observer may close the tab
        favicons_.set(image, *page.host(), persistence_);
        if (hostOf(url_) == page.host()) update(favicon_, image);
        co_return;
    }
}

void BrowserTab::followUrl() {
    auto url = webView_->url();
    const auto host = hostOf(url);
    if (host != hostOf(url_)) favicon_ = host ? favicons_.icon(*host, persistence_) : nullptr;
    if (!std::exchange(becomesDownload_, false)) return update(url_, std::move(url));
    const auto self = shared_from_this();  // an observer may close the tab
    update(url_, std::move(url));
    onDownload();
}

void BrowserTab::createWebView(const NavigationAction& action) {
    if (action.navigationType != NavigationType::linkActivated) {
        const Date now = clock_.now();
        if (now.secondsSince(lastScriptedPopup_) <= popupPause) return;
        lastScriptedPopup_ = now;
    }
    onOpenInNewTab(action.request);
}

void BrowserTab::requestMediaCapture(MediaCaptureRequest request) {
    if (captures_.add(std::move(request))) changed_.emit();
}

void BrowserTab::permissionRefused(RefusedPermission permission) {
    if (refused_.add(permission)) changed_.emit();
}

void BrowserTab::requestDownload(std::unique_ptr<DownloadRequest> request) {
    const auto self = shared_from_this();  // what begins may close the tab
    if (downloads_.add(std::move(request))) changed_.emit();
}

void BrowserTab::documentUnloaded() {
    const bool asked = captures_.documentUnloaded();
    const bool refused = refused_.documentUnloaded();
    const bool downloads = downloads_.documentUnloaded();
    if (asked || refused || downloads) changed_.emit();
}

void BrowserTab::permissionsChanged() {
    for (const auto kind : captures_.blockedKinds()) webView_->stopCapture(kind);
    if (captures_.permissionsChanged()) changed_.emit();
}

void BrowserTab::mirror(WebViewProperty property) {
    switch (property) {
        case WebViewProperty::hasOnlySecureContent:
            return update(hasOnlySecureContent_, webView_->hasOnlySecureContent());
        case WebViewProperty::title:
            return update(pageTitle_, webView_->title());
        case WebViewProperty::url:
            return followUrl();
        case WebViewProperty::canGoBack:
            return update(canGoBack_, webView_->canGoBack());
        case WebViewProperty::canGoForward:
            return update(canGoForward_, webView_->canGoForward());
        case WebViewProperty::estimatedProgress:
            return update(progress_, webView_->estimatedProgress());
        case WebViewProperty::isLoading:
            return update(isLoading_, webView_->isLoading());
        case WebViewProperty::failure:
        case WebViewProperty::hoveredLink:
            return;  // they change nothing in the tab
        case WebViewProperty::activeCapture:
            return update(activeCapture_, webView_->activeCapture());
    }
}

template <class T>
void BrowserTab::update(T& member, T value) {
    if (member == value) return;
    member = std::move(value);
    changed_.emit();
}

}  // namespace orvu
