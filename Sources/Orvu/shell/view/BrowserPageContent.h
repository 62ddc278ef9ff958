#pragma once

#include "core/BrowserStore.h"
#include "shell/view/BrowserNewTabPageView.h"
#include "shell/view/WebViewHost.h"

#include <gtkmm/overlay.h>

#include <functional>
#include <memory>
#include <optional>

namespace orvu {

/// The card that shows one tab: its page, or the new tab page.
class BrowserPageContent : public Gtk::Overlay {
public:
    explicit BrowserPageContent(std::shared_ptr<BrowserStore> store);

    /// Shows `tab`. True if another page, or another empty tab, stands here now.
    bool show(const std::shared_ptr<BrowserTab>& tab);
    /// Gives the keyboard to the page, or to the field of the new tab page.
    void focusContent();

    /// Called when an element of the page takes the whole screen, and when it gives it back.
    void setOnFullscreen(std::function<void(bool)> slot) { host_.onFullscreen = std::move(slot); }

private:
    void showNewTabPage(const std::optional<Uuid>& tab);

    const std::shared_ptr<BrowserStore> store_;
    WebViewHost host_;
    std::unique_ptr<BrowserNewTabPageView> newTabPage_;
    std::optional<Uuid> newTab_;  ///< the empty tab that `newTabPage_` stands for
};

}  // namespace orvu
