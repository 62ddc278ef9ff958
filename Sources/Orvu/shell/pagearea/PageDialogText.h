#pragma once

#include "foundation/text/Translation.h"
#include "platform/PageDialogs.h"

#include <string>
#include <string_view>

namespace orvu {

/// What the card of a page's dialog says. Only `message` and `suggestion` are the page's words;
/// who asks always stands apart from them.
struct PageDialogText {
    static constexpr Phrase silence = phrase("No more from this page");
    static constexpr Phrase name = phrase("User name");
    static constexpr Phrase password = phrase("Password");
    static constexpr Phrase answer = phrase("Answer");

    std::string asker;    ///< the host, as a person is to read it
    std::string caption;  ///< what the asker wants
    std::string message;  ///< empty for none
    std::string warning;  ///< what the person should know before answering; empty for none
    std::string accept;
    std::string cancel;  ///< empty where there is nothing to choose

    [[nodiscard]] static PageDialogText of(const PageDialog& dialog);
    /// The whole, for assistive technology.
    [[nodiscard]] std::string spoken() const;
    /// Whether Return cancels: what accepting does can't be taken back.
    [[nodiscard]] static bool isCancelDefault(const PageDialog& dialog) {
        return dialog.kind == PageDialog::Kind::beforeUnload;
    }

    friend bool operator==(const PageDialogText&, const PageDialogText&) = default;
};

}  // namespace orvu
