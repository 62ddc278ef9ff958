#pragma once

#include "foundation/async/Future.h"
#include "foundation/Signal.h"
#include "platform/DownloadRequest.h"
#include "platform/LoadFailure.h"
#include "platform/MediaCapture.h"
#include "platform/Navigation.h"
#include "platform/PageDialogs.h"
#include "platform/PageMenu.h"
#include "platform/RefusedPermission.h"
#include "platform/WebsiteData.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace orvu {

/// The mirrored properties of a web view, for change notices.
enum class WebViewProperty {
    hasOnlySecureContent,
    title,
    url,
    canGoBack,
    canGoForward,
    estimatedProgress,
    isLoading,
    failure,
    activeCapture,
    hoveredLink,
};

/// What a page script gave.
struct ScriptResult {
    enum class Kind {
        text,       ///< a string, in `text`
        json,       ///< any other value that has a JSON form, which is in `text`
        undefined,  ///< undefined or a value without a JSON form
        failed,     ///< an exception, a script that does not parse, or a page that went away
    };
    Kind kind = Kind::failed;
    std::string text;
};

/// How a text is to be looked for in a page. Upper and lower case are the same.
struct FindConfiguration {
    bool backwards = false;
    bool wraps = true;  ///< go on at the other end of the page

    friend bool operator==(const FindConfiguration&, const FindConfiguration&) = default;
};

/// Decides for one web view what navigation may do, and hears of its end.
class NavigationDelegate {
public:
    virtual ~NavigationDelegate() = default;

    [[nodiscard]] virtual NavigationPolicy decidePolicy(const NavigationAction& action) = 0;
    [[nodiscard]] virtual ResponsePolicy decidePolicy(const NavigationResponse& response) = 0;
    /// The main frame finished loading. The view's title is that of the finished page. Failed
    /// and replaced loads and changes within a document don't come here.
    virtual void didFinish() = 0;
    /// The page asks for a window of its own. It never gets one from the engine.
    virtual void createWebView(const NavigationAction& action) = 0;
    /// The page wants to use the camera or the microphone. The request may be kept, and answered
    /// later.
    virtual void requestMediaCapture(MediaCaptureRequest request) = 0;
    /// The page asked for something and was refused. It may do so as often as it likes.
    virtual void permissionRefused(RefusedPermission permission) = 0;
    /// The page wants something downloaded. The request may be kept, and begun later.
    virtual void requestDownload(std::unique_ptr<DownloadRequest> request) = 0;
    /// The document of the main frame has gone: another stands in its place, or its process ended.
    virtual void documentUnloaded() = 0;
};

/// A live page. It need not be on screen to load. Its end ends the page's process.
class WebView {
public:
    virtual ~WebView() = default;

    /// Begins to load; `url()` gives the new address at once. A load that fails leaves the
    /// previous page and puts its address back.
    virtual void load(const Url& url) = 0;
    /// The same in the name of a page, in a view that shows none yet: what is sent tells no more of
    /// that page, and brings no more cookies, than if the page itself led there.
    virtual void load(const Url& url, const Initiator& initiator) = 0;
    /// The same in a view that shows no page yet and that nobody looks at. `url()` gives the address,
    /// but nothing is on its way until the load has its turn, the lowest first, or somebody wants
    /// to see the page. An engine that knows no turns loads at once.
    virtual void loadInTurn(const Url& url, [[maybe_unused]] std::size_t turn) { load(url); }
    virtual void stopLoading() = 0;
    virtual void reload() = 0;
    virtual void goBack() = 0;
    virtual void goForward() = 0;

    [[nodiscard]] virtual std::string title() const = 0;
    [[nodiscard]] virtual std::optional<Url> url() const = 0;
    [[nodiscard]] virtual bool canGoBack() const = 0;
    [[nodiscard]] virtual bool canGoForward() const = 0;
    /// From 0 to 1.
    [[nodiscard]] virtual double estimatedProgress() const = 0;
    [[nodiscard]] virtual bool isLoading() const = 0;
    [[nodiscard]] virtual bool hasOnlySecureContent() const = 0;
    /// What the page, or a frame in it, looks or listens with now. What is muted is off: a page
    /// can't take that back by itself.
    [[nodiscard]] virtual ActiveCapture activeCapture() const = 0;

    /// Why the last load brought no page; nothing from the next one's beginning on.
    [[nodiscard]] virtual const std::optional<LoadFailure>& failure() const = 0;
    /// Forgets it.
    virtual void dismissFailure() = 0;
    /// Loads what failed of its certificate all the same, and takes that very certificate from that
    /// host until the program ends. What came so is never secure.
    virtual void loadWithRefusedCertificate() = 0;

    /// Opens the engine's tools for people who build pages, on this one.
    virtual void showInspector() = 0;

    /// How large the page is drawn; 1 is actual size.
    [[nodiscard]] virtual double pageZoom() const = 0;
    virtual void setPageZoom(double zoom) = 0;

    /// Runs a script in the main frame, in a world of the program's own: it sees the document,
    /// but none of the page's variables. A page that is yet to load loads now, and is asked when it
    /// has come. No result comes once the view is gone.
    [[nodiscard]] virtual Future<ScriptResult> evaluateJavaScript(std::string script) = 0;

    /// Moves to the next match of `text`, which is not empty, from the present one on, and marks
    /// all matches. Whether there is one. No result comes once the view is gone.
    [[nodiscard]] virtual Future<bool> find(std::string text, FindConfiguration configuration) = 0;
    /// Ends what the page captures now, and lets it ask anew.
    virtual void stopCapture(CaptureKind kind) = 0;
    /// What websites stored where this page stores too.
    [[nodiscard]] virtual std::shared_ptr<WebsiteData> websiteData() = 0;

    /// What the page asks the person. It lives as long as the view.
    [[nodiscard]] virtual PageDialogs& dialogs() = 0;
    /// Whether the view may end: a page in which the person did something may want to ask first, in
    /// its dialogs. A page that doesn't answer may be ended after a moment. Who drops the answer
    /// takes the question back.
    [[nodiscard]] virtual Future<bool> mayClose() = 0;
    /// Shows the desktop's dialog for printing the page.
    virtual void print() = 0;
    /// Saves the page with all that belongs to it as a download.
    virtual void savePage() = 0;

    /// The page's document as its server sent it, in UTF-8. Nothing without a page, or for a
    /// document of more than 16 MB. No result comes once the view is gone.
    [[nodiscard]] virtual Future<std::optional<std::string>> source() = 0;
    /// Shows `text`, the source of `page`, as plain text. The address then says so.
    virtual void showSource(const Url& page, std::string text) = 0;

    /// Where the link leads that the pointer is over.
    [[nodiscard]] virtual const std::optional<Url>& hoveredLink() const = 0;
    /// Calls `slot` when something is chosen in the page's menu that is for others to do.
    virtual sigc::connection connectMenuChosen(
        const sigc::slot<void(const PageMenuChoice&)>& slot) = 0;

    /// `delegate` must outlive the view or be taken away with nullptr.
    virtual void setNavigationDelegate(NavigationDelegate* delegate) = 0;
    /// Calls `slot` after each change of a property.
    virtual sigc::connection connectPropertyChanged(
        const sigc::slot<void(WebViewProperty)>& slot) = 0;

    /// Called when the page takes the keyboard focus. May be empty.
    sigc::slot<void()> onFocus;
};

}  // namespace orvu
