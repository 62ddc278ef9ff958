#pragma once

#include "core/BrowserStore.h"
#include "look/view/FrameRefresh.h"
#include "shell/view/BrowserNewTabPageView.h"
#include "shell/view/WebViewHost.h"
#include "site/view/CaptureQuestionView.h"

#include <gtkmm/overlay.h>

#include <functional>
#include <memory>
#include <optional>

namespace orvu {

/// The card that shows one tab: its page, with what that asks for, or the new tab page.
class BrowserPageContent : public Gtk::Overlay {
public:
    explicit BrowserPageContent(std::shared_ptr<BrowserStore> store);
    ~BrowserPageContent() override;

    /// Shows `tab`. True if another page, or another empty tab, stands here now.
    bool show(const std::shared_ptr<BrowserTab>& tab);
    /// Gives the keyboard to the page, or to the field of the new tab page.
    void focusContent();
    /// What the page asks for, if it asks; otherwise nullptr.
    [[nodiscard]] Gtk::Widget* question() { return question_.get_visible() ? &question_ : nullptr; }

    /// Called when an element of the page takes the whole screen, and when it gives it back.
    void setOnFullscreen(std::function<void(bool)> slot) { host_.onFullscreen = std::move(slot); }

private:
    void showNewTabPage(const std::optional<Uuid>& tab);

    const std::shared_ptr<BrowserStore> store_;
    WebViewHost host_;
    std::unique_ptr<BrowserNewTabPageView> newTabPage_;
    std::optional<Uuid> newTab_;  ///< the empty tab that `newTabPage_` stands for
    CaptureQuestionView question_;
    std::weak_ptr<BrowserTab> tab_;
    FrameRefresh refresh_;
    ScopedConnection tabChanged_;
};

}  // namespace orvu
