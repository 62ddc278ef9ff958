#include "platform/linux/web/PageLeaving.h"

#include "foundation/Url.h"
#include "platform/linux/GObjectPointer.h"
#include "platform/linux/web/HeldDialog.h"
#include "platform/linux/web/PageScript.h"

#include <algorithm>
#include <utility>

namespace orvu {
namespace {

gboolean eventHeard(GtkEventControllerLegacy*, GdkEvent* event, gpointer data) {
    switch (gdk_event_get_event_type(event)) {
        case GDK_KEY_PRESS:
            if (gdk_key_event_is_modifier(event)) break;
            [[fallthrough]];
        case GDK_BUTTON_PRESS:
        case GDK_TOUCH_BEGIN:
        case GDK_DROP_START:
            static_cast<PageLeaving*>(data)->touched();
            break;
        default:
            break;
    }
    return GDK_EVENT_PROPAGATE;
}

/// Whether an answer brings a document that takes the place of the one of `standing`.
bool bringsOther(WebKitResponsePolicyDecision* decision, const std::string& standing) {
    if (!webkit_response_policy_decision_is_main_frame_main_resource(decision)) return false;
    WebKitURIResponse* const response = webkit_response_policy_decision_get_response(decision);
    constexpr guint noContent = 204;
    constexpr guint resetContent = 205;
    const guint status = webkit_uri_response_get_status_code(response);
    if (status == noContent || status == resetContent) return false;
    const char* const uri = webkit_uri_response_get_uri(response);
    const auto url = uri ? Url::parse(uri) : std::nullopt;
    return !url || url->host().value_or("") != standing;
}

}  // namespace

PageLeaving::PageLeaving(WebKitWebView* view, PageDialogs& dialogs, MainLoop& loop)
    : view_(view), dialogs_(dialogs), loop_(loop), events_(gtk_event_controller_legacy_new()) {
    gtk_event_controller_set_propagation_phase(events_, GTK_PHASE_CAPTURE);
    g_signal_connect(events_, "event", G_CALLBACK(eventHeard), this);
    gtk_widget_add_controller(GTK_WIDGET(view_), events_);
}

PageLeaving::~PageLeaving() {
    self_.reset();
    gtk_widget_remove_controller(GTK_WIDGET(view_), events_);
    settle(true);
}

Future<bool> PageLeaving::mayGo() {
    const Promise<bool> promise;
    if (!isTouched_) {
        promise.resolve(true);
        return promise.future();
    }
    promise.onAbandoned([self = Handle{self_}] {
        if (const auto live = self.lock()) (*live)->unwanted();
    });
    closers_.push_back(promise);
    ask([promise](bool mayGo) { promise.resolve(mayGo); });
    return promise.future();
}

bool PageLeaving::holds(WebKitResponsePolicyDecision* decision, const std::string& standing) {
    if (!isTouched_ || hasAgreed_ || !bringsOther(decision, standing)) return false;
    auto held = std::make_shared<GObjectPointer<WebKitPolicyDecision>>(
        GObjectPointer<WebKitPolicyDecision>::retain(WEBKIT_POLICY_DECISION(decision)));
    ask([this, held, self = Handle{self_}](bool mayGo) {
        if (self.expired()) return webkit_policy_decision_ignore(held->get());
        hasAgreed_ = mayGo;
        if (mayGo) {
            webkit_policy_decision_use(held->get());
        } else {
            webkit_policy_decision_ignore(held->get());
        }
    });
    return true;
}

void PageLeaving::ask(Done done) {
    askers_.push_back(std::move(done));
    if (askers_.size() > 1) return;
    const auto number = ++askNumber_;
    dialogs_.setLeaving(true);   // a page that waits for the person doesn't hear the question
    if (question_ != 0) return;  // the person is asked already
    isAnswerDue_ = true;
    webkit_web_view_try_close(view_);
    // Its own answer doesn't tell a page that agrees from one that is slow. What is asked after it
    // is answered after it.
    runPageScript(view_, "0", [self = Handle{self_}, number](const ScriptResult&) {
        if (const auto live = self.lock()) (*live)->heard(number);
    });
    patience_ = loop_.after(patience, [this] { settle(true); });
}

void PageLeaving::heard(std::uint64_t number) {
    isAnswerDue_ = false;
    if (askNumber_ == number) settle(true);
}

void PageLeaving::settle(bool mayGo) {
    if (!isAsking()) return;
    ++askNumber_;
    patience_.cancel();
    closers_.clear();
    const auto askers = std::exchange(askers_, {});
    dialogs_.setLeaving(isPersonal_);
    for (const auto& done : askers) done(mayGo);
}

void PageLeaving::confirm(WebKitScriptDialog* dialog, const std::string& host) {
    if (!isTouched_ || hasAgreed_) return webkit_script_dialog_confirm_set_confirmed(dialog, TRUE);
    // A page that was slow to hear a question asks about what has been decided long ago.
    if (isAnswerDue_ && !isAsking()) {
        return webkit_script_dialog_confirm_set_confirmed(dialog, FALSE);
    }
    patience_.cancel();
    isOfLoad_ = !isAsking();
    PageDialog question{.kind = PageDialog::Kind::beforeUnload, .host = host};
    question.startedByPerson = isAsking() || isPersonal_ || followsLink_;
    auto answer = [held = HeldDialog{dialog},
                   self = Handle{self_}](const PageDialogAnswer& given) mutable {
        webkit_script_dialog_confirm_set_confirmed(held.get(),
                                                   static_cast<gboolean>(given.isAccepted));
        held.close();
        if (const auto live = self.lock()) (*live)->answered(given.isAccepted);
    };
    question_ = dialogs_.ask(std::move(question), loop_.now(), std::move(answer));
}

void PageLeaving::answered(bool leaves) {
    question_ = 0;
    if (std::exchange(isOfLoad_, false)) {
        hasAgreed_ = leaves;
        if (!leaves) forgetLoad();
    }
    settle(leaves);
}

void PageLeaving::forgetLoad() {
    loadEnded();
    if (!webkit_web_view_is_loading(view_)) return;
    runPageScript(view_, "history.replaceState(history.state, ''); 0", [](const ScriptResult&) {});
}

/// Nobody waits for the page to go any more: the person is not to be asked in vain.
void PageLeaving::unwanted() {
    const bool isWanted = std::ranges::any_of(closers_, &Promise<bool>::isWanted);
    if (isWanted || closers_.size() < askers_.size()) return;
    if (question_ != 0 && !isOfLoad_) return dialogs_.answer(question_, {});
    settle(false);
}

void PageLeaving::personNavigates() {
    isPersonal_ = true;
    dialogs_.setLeaving(true);  // they would hold up what the person wants
}

void PageLeaving::loadEnded() {
    hasAgreed_ = isPersonal_ = followsLink_ = false;
    if (!isAsking()) dialogs_.setLeaving(false);
}

void PageLeaving::documentGone() {
    loadEnded();
    isTouched_ = isAnswerDue_ = false;
    settle(true);
}

}  // namespace orvu
