#include "shell/pagearea/PageDialogText.h"

#include "foundation/text/DisplayHost.h"
#include "foundation/text/Translation.h"

namespace orvu {
namespace {

using Kind = PageDialog::Kind;

std::string asker(const PageDialog& dialog) {
    const std::string host = displayHost(dialog.host);
    if (dialog.isForProxy) return tr("Proxy {1}", host);
    return host.empty() ? std::string{phrase("This page")} : host;
}

/// The engine doesn't tell which frame speaks.
std::string caption(const PageDialog& dialog) {
    switch (dialog.kind) {
        case Kind::alert:
            return phrase("The page, or something embedded in it, says:");
        case Kind::confirm:
        case Kind::prompt:
            return phrase("The page, or something embedded in it, asks:");
        case Kind::beforeUnload:
            return phrase("Leave this page?");
        case Kind::authentication:
            break;
    }
    return dialog.isForProxy ? phrase("The proxy wants a name and a password.")
                             : phrase("The server wants a name and a password.");
}

std::string message(const PageDialog& dialog) {
    if (dialog.kind == Kind::beforeUnload) return phrase("What you typed here may be lost.");
    if (dialog.kind != Kind::authentication || dialog.text.empty()) return dialog.text;
    return tr("It says: “{1}”", dialog.text);
}

std::string warning(const PageDialog& dialog) {
    if (dialog.kind != Kind::authentication) return "";
    std::string warning;
    if (dialog.isRetry) warning = phrase("That name or password wasn't accepted.");
    if (!dialog.isEncrypted) {
        warning.append(warning.empty() ? "" : " ");
        warning.append(phrase("What you enter goes over the network unencrypted."));
    }
    return warning;
}

}  // namespace

PageDialogText PageDialogText::of(const PageDialog& dialog) {
    PageDialogText text{.asker = orvu::asker(dialog),
                        .caption = orvu::caption(dialog),
                        .message = orvu::message(dialog),
                        .warning = orvu::warning(dialog),
                        .accept = phrase("OK"),
                        .cancel = dialog.kind == Kind::alert ? Phrase{} : phrase("Cancel")};
    if (dialog.kind == Kind::beforeUnload) {
        text.accept = phrase("Leave");
        text.cancel = phrase("Stay on Page");
    } else if (dialog.kind == Kind::authentication) {
        text.accept = phrase("Sign In");
    }
    return text;
}

std::string PageDialogText::spoken() const {
    std::string all = asker + ". " + caption;
    for (const auto* const part : {&message, &warning}) {
        if (!part->empty()) all.append(" ").append(*part);
    }
    return all;
}

}  // namespace orvu
