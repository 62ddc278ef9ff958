#pragma once

#include "foundation/Signal.h"
#include "platform/linux/web/OrvuWebView.h"

#include <gtkmm/box.h>

#include <memory>

namespace orvu {

/// A place in a window that shows one page of the engine. The page belongs to its tab and lives on
/// when another takes its place.
///
/// Pages that were shown here stay here, hidden: whenever the engine's view is put into a window, the
/// engine makes new frame buffers for it, each as large as the view, and forgets to free the former
/// ones for as long as the page lives.
class WebViewHost : public Gtk::Box {
public:
    WebViewHost();
    ~WebViewHost() override;

    /// Shows `page`, which the engine of this desktop made, or nothing. True if another page, or
    /// none, stands here now. A page that ends takes itself out.
    bool show(WebView* page);
    /// Gives the keyboard to the page.
    void focusPage();

    /// Calls `slot` when an element of the page takes the whole screen, and when it gives it back. The
    /// person takes it back by Escape or with the window, and a page that is too busy to answer
    /// can't keep it.
    sigc::connection connectFullscreen(const sigc::slot<void(bool)>& slot) {
        return fullscreen_.connect(slot);
    }

private:
    [[nodiscard]] OrvuWebView* shown() const;
    /// Whether the page that was shown last is still here.
    [[nodiscard]] bool holdsShown() const;
    void attach(OrvuWebView& page);
    void detach();
    void setFullscreen(bool on);
    void watchWindow();
    void takeScreenBack();
    /// Ends the whole-screen view of a page that is not shown any more; null if it is gone.
    void giveScreenBack(OrvuWebView* page);

    std::weak_ptr<OrvuWebView*> shown_;
    bool inFullscreen_ = false;
    bool windowWasFull_ = false;  ///< before an element took the screen
    sigc::signal<void(bool)> fullscreen_;
    ScopedConnection pageFullscreen_;
    ScopedConnection windowFullscreen_;
};

}  // namespace orvu
