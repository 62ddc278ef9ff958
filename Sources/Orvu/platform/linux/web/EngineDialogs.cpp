#include "platform/linux/web/EngineDialogs.h"

#include "platform/linux/GObjectPointer.h"
#include "platform/linux/web/HeldDialog.h"

#include <cstring>
#include <string_view>
#include <utility>

namespace orvu {
namespace {

using Kind = PageDialog::Kind;
using Request = GObjectPointer<WebKitAuthenticationRequest>;

/// A text of a page may be of any size.
std::string_view headOf(const char* text) {
    constexpr std::size_t bytes = 64 * 1024;
    return text ? std::string_view{text, strnlen(text, bytes)} : std::string_view{};
}

Kind kindOf(WebKitScriptDialog* dialog) {
    switch (webkit_script_dialog_get_dialog_type(dialog)) {
        case WEBKIT_SCRIPT_DIALOG_ALERT:
            break;
        case WEBKIT_SCRIPT_DIALOG_CONFIRM:
            return Kind::confirm;
        case WEBKIT_SCRIPT_DIALOG_PROMPT:
            return Kind::prompt;
        case WEBKIT_SCRIPT_DIALOG_BEFORE_UNLOAD_CONFIRM:
            return Kind::beforeUnload;
    }
    return Kind::alert;
}

void answerScript(WebKitScriptDialog* dialog, Kind kind, const PageDialogAnswer& answer) {
    if (kind == Kind::confirm) {
        webkit_script_dialog_confirm_set_confirmed(dialog,
                                                   static_cast<gboolean>(answer.isAccepted));
    } else if (kind == Kind::prompt && answer.isAccepted) {
        webkit_script_dialog_prompt_set_text(dialog, answer.text.c_str());
    }
}

bool wantsPassword(WebKitAuthenticationScheme scheme) {
    switch (scheme) {
        case WEBKIT_AUTHENTICATION_SCHEME_DEFAULT:
        case WEBKIT_AUTHENTICATION_SCHEME_HTTP_BASIC:
        case WEBKIT_AUTHENTICATION_SCHEME_HTTP_DIGEST:
        case WEBKIT_AUTHENTICATION_SCHEME_HTML_FORM:
        case WEBKIT_AUTHENTICATION_SCHEME_NTLM:
        case WEBKIT_AUTHENTICATION_SCHEME_NEGOTIATE:
            return true;
        default:
            return false;
    }
}

bool isEncrypted(WebKitAuthenticationRequest* request) {
    WebKitSecurityOrigin* const origin = webkit_authentication_request_get_security_origin(request);
    const char* const protocol = webkit_security_origin_get_protocol(origin);
    const bool isSecure = protocol && std::strcmp(protocol, "https") == 0;
    webkit_security_origin_unref(origin);
    // The others never send the password itself.
    return isSecure || webkit_authentication_request_get_scheme(request) !=
                           WEBKIT_AUTHENTICATION_SCHEME_HTTP_BASIC;
}

PageDialog authentication(WebKitAuthenticationRequest* request) {
    PageDialog dialog{.kind = Kind::authentication};
    dialog.host = headOf(webkit_authentication_request_get_host(request));
    dialog.text = headOf(webkit_authentication_request_get_realm(request));
    dialog.isForProxy = webkit_authentication_request_is_for_proxy(request) != FALSE;
    dialog.isRetry = webkit_authentication_request_is_retry(request) != FALSE;
    dialog.isEncrypted = isEncrypted(request);
    for (const auto& part :
         {dialog.host, std::to_string(webkit_authentication_request_get_port(request)),
          std::to_string(webkit_authentication_request_get_scheme(request)),
          std::string{dialog.isForProxy ? "proxy" : ""}, std::string{dialog.isRetry ? "again" : ""},
          dialog.text}) {
        dialog.space.append(part).push_back('\n');
    }
    return dialog;
}

void answerServer(WebKitAuthenticationRequest* request, const PageDialogAnswer& answer) {
    // Whoever doesn't sign in sees what the server shows to others; to cancel would end the load.
    if (!answer.isAccepted) return webkit_authentication_request_authenticate(request, nullptr);
    // The rest of the page, and the next ones, are behind the same password: the network process
    // knows it as long as it runs, and nobody writes it down.
    WebKitCredential* const credential = webkit_credential_new(
        answer.text.c_str(), answer.password.c_str(), WEBKIT_CREDENTIAL_PERSISTENCE_FOR_SESSION);
    webkit_authentication_request_authenticate(request, credential);
    webkit_credential_free(credential);
}

/// Takes a question back when the engine doesn't need an answer any more.
struct Withdrawal {
    std::weak_ptr<EngineDialogs*> owner;
    PageDialogs* dialogs = nullptr;
    PageDialogs::Id question = 0;

    static void cancelled(WebKitAuthenticationRequest*, gpointer data) {
        const auto* const self = static_cast<Withdrawal*>(data);
        if (!self->owner.expired()) self->dialogs->withdraw(self->question);
    }
    static void drop(gpointer data, GClosure*) { delete static_cast<Withdrawal*>(data); }
};

}  // namespace

EngineDialogs::EngineDialogs(WebKitWebView* view, PageDialogs& dialogs, PageLeaving& leaving,
                             MainLoop& loop, Page page)
    : view_(view), dialogs_(dialogs), leaving_(leaving), loop_(loop), page_(std::move(page)) {
    g_signal_connect(view_, "script-dialog", G_CALLBACK(scriptDialog), this);
    g_signal_connect(view_, "authenticate", G_CALLBACK(authenticate), this);
}

EngineDialogs::~EngineDialogs() { g_signal_handlers_disconnect_by_data(view_, this); }

gboolean EngineDialogs::scriptDialog(WebKitWebView*, WebKitScriptDialog* dialog, gpointer data) {
    static_cast<EngineDialogs*>(data)->ask(dialog);
    return TRUE;
}

gboolean EngineDialogs::authenticate(WebKitWebView*, WebKitAuthenticationRequest* request,
                                     gpointer data) {
    webkit_authentication_request_set_can_save_credentials(request, FALSE);
    const auto scheme = webkit_authentication_request_get_scheme(request);
    if (wantsPassword(scheme)) {
        static_cast<EngineDialogs*>(data)->ask(request);
    } else if (scheme == WEBKIT_AUTHENTICATION_SCHEME_CLIENT_CERTIFICATE_REQUESTED) {
        webkit_authentication_request_authenticate(request, nullptr);  // there is none
    } else {
        webkit_authentication_request_cancel(request);
    }
    return TRUE;
}

void EngineDialogs::ask(WebKitScriptDialog* dialog) {
    const Kind kind = kindOf(dialog);
    if (kind == Kind::beforeUnload) return leaving_.confirm(dialog, page_.host());
    PageDialog asked{.kind = kind, .host = page_.host()};
    asked.text = headOf(webkit_script_dialog_get_message(dialog));
    if (kind == Kind::prompt) {
        asked.suggestion = headOf(webkit_script_dialog_prompt_get_default_text(dialog));
    }
    auto answer = [held = HeldDialog{dialog}, kind](const PageDialogAnswer& given) mutable {
        answerScript(held.get(), kind, given);
        held.close();
    };
    if (dialogs_.ask(std::move(asked), loop_.now(), std::move(answer)) != 0) return;
    resting_.emplace(dialog);
    rest_ = loop_.after(breath, [this] { resting_.reset(); });
}

void EngineDialogs::ask(WebKitAuthenticationRequest* request) {
    PageDialog asked = authentication(request);
    asked.startedByPerson = page_.isAboutToChange();
    const auto id = dialogs_.ask(std::move(asked), loop_.now(),
                                 [held = Request::retain(request)](const PageDialogAnswer& given) {
                                     answerServer(held.get(), given);
                                 });
    g_signal_connect_data(request, "cancelled", G_CALLBACK(Withdrawal::cancelled),
                          new Withdrawal{self_, &dialogs_, id}, Withdrawal::drop,
                          G_CONNECT_DEFAULT);
}

}  // namespace orvu
