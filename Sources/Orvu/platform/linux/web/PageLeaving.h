#pragma once

#include "foundation/async/Future.h"
#include "platform/MainLoop.h"
#include "platform/PageDialogs.h"

#include <webkit/webkit.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace orvu {

/// Lets the page that stands say whether it may be left, where the person did something in it: on
/// closing, and before a document of another site takes its place.
///
/// The engine asks by itself only before another document of the same site, since others come in a
/// process of their own. It takes a script of the program's for an act of the person, so this looks
/// at keys and buttons itself. And when the person stays, it goes on to say that the page is loading
/// something else, until the page moves within its document.
class PageLeaving {
public:
    /// How long a page may take until it is left without an answer. While it asks the person, there
    /// is no limit.
    static constexpr std::chrono::milliseconds patience{1500};

    /// All must outlive this.
    PageLeaving(WebKitWebView* view, PageDialogs& dialogs, MainLoop& loop);
    PageLeaving(const PageLeaving&) = delete;
    PageLeaving& operator=(const PageLeaving&) = delete;
    ~PageLeaving();

    /// Whether the page may go.
    [[nodiscard]] Future<bool> mayGo();
    /// Asks before a document of `host` that a server is about to give takes the place of one of
    /// `standing`, if there is anything to ask; then the decision is made later.
    [[nodiscard]] bool holds(WebKitResponsePolicyDecision* decision, const std::string& standing);
    /// Hands the engine's own question on, in the name of `host`.
    void confirm(WebKitScriptDialog* dialog, const std::string& host);

    /// The person, or the program for the person, sets off a navigation.
    void personNavigates();
    /// Whether what the person set off is still under way.
    [[nodiscard]] bool isPersonal() const { return isPersonal_; }
    /// A page sets one off; `byPerson` if it comes from a click on a link.
    void pageNavigates(bool byPerson) { followsLink_ = byPerson; }
    /// No load is under way any more.
    void loadEnded();
    /// Another document stands, or the page's process has ended.
    void documentGone();
    /// The person did something in the page.
    void touched() { isTouched_ = true; }

private:
    using Done = std::function<void(bool)>;
    using Handle = std::weak_ptr<PageLeaving*>;

    [[nodiscard]] bool isAsking() const { return !askers_.empty(); }
    void ask(Done done);
    void heard(std::uint64_t number);
    void settle(bool mayGo);
    void answered(bool leaves);
    void forgetLoad();
    void unwanted();

    WebKitWebView* const view_;
    PageDialogs& dialogs_;
    MainLoop& loop_;
    GtkEventController* const events_;  ///< the view's own
    std::vector<Done> askers_;
    std::vector<Promise<bool>> closers_;  ///< of those among them who want the page closed
    std::uint64_t askNumber_ = 0;
    PageDialogs::Id question_ = 0;  ///< what the person is asked
    bool isOfLoad_ = false;         ///< the engine asks of itself, before a load
    bool isAnswerDue_ = false;      ///< of the page, to the last question of this
    bool isTouched_ = false;
    bool hasAgreed_ = false;   ///< to the navigation that is under way
    bool isPersonal_ = false;  ///< the program began the load that is under way
    bool followsLink_ = false;
    Scheduled patience_;
    std::shared_ptr<PageLeaving*> self_ = std::make_shared<PageLeaving*>(this);
};

}  // namespace orvu
