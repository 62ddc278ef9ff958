#pragma once

#include <webkit/webkit.h>

#include <utility>

namespace orvu {

/// A counted reference to a dialog of the engine. The page goes on when the last one has gone.
class HeldDialog {
public:
    explicit HeldDialog(WebKitScriptDialog* dialog) : dialog_(webkit_script_dialog_ref(dialog)) {}
    HeldDialog(HeldDialog&& other) noexcept : dialog_(std::exchange(other.dialog_, nullptr)) {}
    HeldDialog& operator=(HeldDialog&&) = delete;
    ~HeldDialog() { close(); }

    [[nodiscard]] WebKitScriptDialog* get() const { return dialog_; }
    void close() {
        if (dialog_) webkit_script_dialog_unref(std::exchange(dialog_, nullptr));
    }

private:
    WebKitScriptDialog* dialog_;
};

}  // namespace orvu
