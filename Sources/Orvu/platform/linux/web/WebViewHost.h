#pragma once

#include "core/BrowserTab.h"

#include <gtkmm/box.h>

#include <functional>
#include <memory>

namespace orvu {

/// A place in a window that shows one tab's page. The page belongs to its tab and lives on when
/// it is taken out.
class WebViewHost : public Gtk::Box {
public:
    WebViewHost();
    ~WebViewHost() override;

    /// Shows the page of `tab`, or nothing for an empty tab. True if another page, or none, stands
    /// here now.
    bool show(const std::shared_ptr<BrowserTab>& tab);
    /// Gives the keyboard to the page.
    void focusPage();

    /// Called when an element of the page takes the whole screen, and when it gives it back.
    std::function<void(bool)> onFullscreen;

private:
    void attach(BrowserTab& tab);
    void detach();
    void setFullscreen(bool on);
    /// Ends the whole-screen view of a page that is not shown any more; `previous` may be gone.
    void giveScreenBack(BrowserTab* previous);

    std::weak_ptr<BrowserTab> shown_;
    bool inFullscreen_ = false;
};

}  // namespace orvu
