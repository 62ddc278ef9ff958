#include "core/BrowserTab.h"

#include "foundation/Text.h"

namespace orvu {

BrowserTab::BrowserTab(WebConfiguration& configuration, const std::optional<Url>& url,
                       const MainLoop& clock)
    : clock_(clock), webView_(configuration.makeWebView()) {
    webView_->setNavigationDelegate(this);
    hasOnlySecureContent_ = webView_->hasOnlySecureContent();
    webView_->connectPropertyChanged(sigc::mem_fun(*this, &BrowserTab::mirror));
    if (url) webView_->load(*url);
}

BrowserTab::~BrowserTab() { webView_->setNavigationDelegate(nullptr); }

void BrowserTab::setPinned(bool pinned) { update(isPinned_, pinned); }

void BrowserTab::setGroupID(const std::optional<Uuid>& groupID) { update(groupID_, groupID); }

std::string BrowserTab::title() const {
    if (!pageTitle_.empty()) return pageTitle_;
    std::string site = url_ ? siteName(*url_) : "";
    return site.empty() ? "New tab" : site;
}

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

sigc::connection BrowserTab::connectChanged(const sigc::slot<void()>& slot) {
    return changed_.connect(slot);
}

NavigationPolicy BrowserTab::decidePolicy(const NavigationAction& action) {
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
    return attachment || !response.canShowMimeType ? ResponsePolicy::download
                                                   : ResponsePolicy::allow;
}

void BrowserTab::didFinish() {
    const auto self = shared_from_this();  // an observer may close the tab
    onVisit(*this);
}

void BrowserTab::createWebView(const NavigationAction& action) {
    if (action.navigationType != NavigationType::linkActivated) {
        const Date now = clock_.now();
        if (now.secondsSince(lastScriptedPopup_) <= popupPause) return;
        lastScriptedPopup_ = now;
    }
    onOpenInNewTab(action.request);
}

void BrowserTab::mirror(WebViewProperty property) {
    switch (property) {
        case WebViewProperty::hasOnlySecureContent:
            return update(hasOnlySecureContent_, webView_->hasOnlySecureContent());
        case WebViewProperty::title:
            return update(pageTitle_, webView_->title());
        case WebViewProperty::url:
            return update(url_, webView_->url());
        case WebViewProperty::canGoBack:
            return update(canGoBack_, webView_->canGoBack());
        case WebViewProperty::canGoForward:
            return update(canGoForward_, webView_->canGoForward());
        case WebViewProperty::estimatedProgress:
            return update(progress_, webView_->estimatedProgress());
        case WebViewProperty::isLoading:
            return update(isLoading_, webView_->isLoading());
    }
}

template <class T>
void BrowserTab::update(T& member, T value) {
    if (member == value) return;
    member = std::move(value);
    changed_.emit();
}

}  // namespace orvu
