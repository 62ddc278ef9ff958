#pragma once

#include "foundation/Date.h"
#include "foundation/async/Task.h"
#include "foundation/Uuid.h"
#include "foundation/async/TaskScope.h"
#include "pagetools/Reader.h"
#include "platform/MainLoop.h"
#include "platform/WebConfiguration.h"
#include "site/downloads/DownloadQuestions.h"
#include "site/permissions/CaptureQuestions.h"
#include "site/permissions/RefusedPermissions.h"
#include "site/Favicons.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>

namespace orvu {

/// One live tab: a web view with the page's state mirrored into observable properties, and the
/// decisions about where the page may go. It knows nothing of windows or other tabs; the slots
/// `onVisit`, `onDownload` and `onOpenInNewTab` and the web view's `onFocus` are its only way
/// outward.
class BrowserTab : public NavigationDelegate,
                   public sigc::trackable,
                   public std::enable_shared_from_this<BrowserTab> {
public:
    /// How long after an allowed scripted popup the next ones are dropped, inclusive.
    static constexpr double popupPause = 3.0;  // seconds

    /// Makes the web view and, with an address, begins to load at once. `clock`, `favicons` and
    /// `permissions` must outlive the tab; `persistence` says whether what it meets may be written down.
    BrowserTab(WebConfiguration& configuration, const UrlRequest& request, const MainLoop& clock,
               FaviconStore& favicons, SitePermissions& permissions, Persistence persistence);
    ~BrowserTab() override;
    BrowserTab(const BrowserTab&) = delete;
    BrowserTab& operator=(const BrowserTab&) = delete;

    /// The tab's identity for this run.
    [[nodiscard]] const Uuid& id() const { return id_; }
    [[nodiscard]] WebView& webView() { return *webView_; }

    // The page's state, as the web view last told it.
    [[nodiscard]] const std::string& pageTitle() const { return pageTitle_; }
    [[nodiscard]] const std::optional<Url>& url() const { return url_; }
    [[nodiscard]] bool canGoBack() const { return canGoBack_; }
    [[nodiscard]] bool canGoForward() const { return canGoForward_; }
    [[nodiscard]] double progress() const { return progress_; }
    [[nodiscard]] bool isLoading() const { return isLoading_; }
    [[nodiscard]] bool hasOnlySecureContent() const { return hasOnlySecureContent_; }
    [[nodiscard]] ActiveCapture activeCapture() const { return activeCapture_; }

    /// The site's icon, once it is known; null before.
    [[nodiscard]] const ImagePointer& favicon() const { return favicon_; }

    // Set by the store.
    [[nodiscard]] bool isPinned() const { return isPinned_; }
    void setPinned(bool pinned);
    [[nodiscard]] const std::optional<Uuid>& groupID() const { return groupID_; }
    void setGroupID(const std::optional<Uuid>& groupID);

    /// An empty tab: no page, so the new tab page stands in its place.
    [[nodiscard]] bool isNewTab() const { return !url_; }
    /// The page's title, else the site's name, else "New tab".
    [[nodiscard]] std::string title() const;
    /// The address's host; empty without one.
    [[nodiscard]] std::string host() const;
    /// The address's path, decoded; empty without an address and for "/".
    [[nodiscard]] std::string path() const;
    /// Whether everything on the page came over a secure connection.
    [[nodiscard]] bool isSecure() const;

    /// The first `limit` characters of the page's visible text; empty if it can't be read. The tab
    /// may go once it began.
    [[nodiscard]] Task<std::string> pageText(std::size_t limit);
    /// The page's article; nothing if it has none or can't tell. The tab may go meanwhile: then
    /// there is nothing either.
    [[nodiscard]] Task<std::optional<ReaderArticle>> readerArticle();

    /// The camera or microphone that the page wants, if the person is to be asked.
    [[nodiscard]] std::optional<CaptureQuestion> captureQuestion() const {
        return captures_.question();
    }
    /// What the page wants, if the person is to be asked; one thing at a time.
    [[nodiscard]] std::optional<PageQuestion> question() const;
    /// Answers `asked`, if that is the question still.
    void answer(const PageQuestion& asked, PageAnswer answer);
    /// Ends all that the page captures. It may ask anew, and then the person is asked even where
    /// the site is allowed.
    void stopCapture();
    /// What the page asked for and was refused.
    [[nodiscard]] const RefusedPermissions& refusedPermissions() const { return refused_; }

    /// Calls `slot` after each change of a property.
    sigc::connection connectChanged(const sigc::slot<void()>& slot);

    /// A page finished loading.
    sigc::slot<void(BrowserTab&)> onVisit;
    /// A load became a download, and the tab has its previous address again, if any.
    sigc::slot<void()> onDownload;
    /// Something is to open elsewhere.
    sigc::slot<void(const UrlRequest&)> onOpenInNewTab;

    [[nodiscard]] NavigationPolicy decidePolicy(const NavigationAction& action) override;
    [[nodiscard]] ResponsePolicy decidePolicy(const NavigationResponse& response) override;
    void didFinish() override;
    void createWebView(const NavigationAction& action) override;
    void requestMediaCapture(MediaCaptureRequest request) override;
    void permissionRefused(RefusedPermission permission) override;
    void requestDownload(std::unique_ptr<DownloadRequest> request) override;
    void documentUnloaded() override;

private:
    void permissionsChanged();
    void mirror(WebViewProperty property);
    void followUrl();
    void loadFavicon();
    [[nodiscard]] Task<void> findFavicon(Url page);
    [[nodiscard]] static Task<std::optional<ReaderArticle>> findArticle(
        std::weak_ptr<BrowserTab> tab);
    template <class T>
    void update(T& member, T value);

    const Uuid id_ = Uuid::random();
    const MainLoop& clock_;
    FaviconStore& favicons_;
    const Persistence persistence_;
    std::string pageTitle_;
    std::optional<Url> url_;
    bool canGoBack_ = false;
    bool canGoForward_ = false;
    double progress_ = 0;
    bool isLoading_ = false;
    bool isPinned_ = false;
    std::optional<Uuid> groupID_;
    bool hasOnlySecureContent_ = false;
    ActiveCapture activeCapture_;
    RefusedPermissions refused_;
    bool becomesDownload_ = false;  ///< the present load
    ImagePointer favicon_;
    Date lastScriptedPopup_ = Date::distantPast();
    sigc::signal<void()> changed_;
    std::unique_ptr<WebView> webView_;
    // After the view: what waits is denied while that still lives.
    CaptureQuestions captures_;
    DownloadQuestions downloads_;
    TaskScope tasks_;  // last, so that it ends before what its work uses
};

}  // namespace orvu
