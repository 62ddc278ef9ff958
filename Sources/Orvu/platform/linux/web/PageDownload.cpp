#include "platform/linux/web/PageDownload.h"

#include <libsoup/soup.h>

#include <cstring>
#include <utility>

namespace orvu {
namespace {

/// Longer addresses are not kept while they wait.
constexpr std::size_t longestAskedAnew = 8192;  // bytes

/// The part of a name that one owner holds: "example.org" of "files.example.org". Numbers and names
/// without such a part are their own.
std::string ownersDomain(const std::string& host) {
    const char* const domain = soup_tld_get_base_domain(host.c_str(), nullptr);
    return domain ? domain : host;
}

/// Whether an address, asked for by the program itself, is sent no more than if the page asked.
bool isSameSite(const Url& url, const std::optional<Url>& page) {
    if (!page || url.scheme() != page->scheme()) return false;
    const auto host = url.host();
    const auto pageHost = page->host();
    return host && pageHost && ownersDomain(*host) == ownersDomain(*pageHost);
}

}  // namespace

PageDownload::PageDownload(std::unique_ptr<Download> download, WebKitDownload* engineDownload,
                           WebKitWebView* view, const std::optional<Url>& page, DownloadCause cause,
                           std::shared_ptr<const DownloadTaker> taker)
    : download_(std::move(download)),
      cause_(cause),
      host_(page ? page->host().value_or("") : ""),
      taker_(std::move(taker)) {
    g_weak_ref_init(&view_, view);
    WebKitURIRequest* const request = webkit_download_get_request(engineDownload);
    const char* const method = webkit_uri_request_get_http_method(request);
    const auto url = Url::parse(webkit_uri_request_get_uri(request));
    if (!url) return;
    isOfTheWeb_ = isWebUrl(*url);
    canBeAskedAnew_ = isOfTheWeb_ && isSameSite(*url, page) &&
                      url->absoluteString().size() <= longestAskedAnew &&
                      (!method || std::strcmp(method, "GET") == 0);
    if (canBeAskedAnew_) url_ = url->absoluteString();
}

PageDownload::~PageDownload() { g_weak_ref_clear(&view_); }

bool PageDownload::setAside() {
    if (!canBeAskedAnew_) return false;
    download_.reset();
    return true;
}

void PageDownload::begin() {
    if (auto download = std::move(download_)) {
        canBeAskedAnew_ = false;
        if (const auto& take = *taker_) take(std::move(download));
        return;
    }
    if (!std::exchange(canBeAskedAnew_, false)) return;
    const auto view =
        GObjectPointer<WebKitWebView>::adopt(static_cast<WebKitWebView*>(g_weak_ref_get(&view_)));
    if (!view) return;
    // The page is asked again whether this may begin, and is allowed to by now.
    g_object_unref(webkit_web_view_download_uri(view.get(), url_.c_str()));
}

}  // namespace orvu
