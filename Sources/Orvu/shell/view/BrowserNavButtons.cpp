#include "shell/view/BrowserNavButtons.h"

namespace orvu {

BrowserNavButtons::BrowserNavButtons(std::shared_ptr<BrowserStore> store)
    : store_(std::move(store)),
      refresh_(*this, [this] { refresh(); }),
      watch_(*store_, [this] { refresh_.mark(); }) {
    // Not as the buttons' own actions: these would switch them on whatever the tab can do.
    back_.signal_clicked().connect([this] { activate_action("win.goBack"); });
    forward_.signal_clicked().connect([this] { activate_action("win.goForward"); });
    reload_.signal_clicked().connect(
        [this] { activate_action(showsStop_ ? "win.stopLoading" : "win.reload"); });
    append(back_);
    append(forward_);
    append(reload_);
    refresh();
}

void BrowserNavButtons::refresh() {
    const auto tab = store_->active();
    set_visible(tab != nullptr);
    if (!tab) return;
    back_.set_sensitive(tab->canGoBack());
    forward_.set_sensitive(tab->canGoForward());
    reload_.set_sensitive(!tab->isNewTab());
    if (showsStop_ == tab->isLoading()) return;
    showsStop_ = tab->isLoading();
    reload_.setSymbol(showsStop_ ? "xmark" : "arrow.clockwise");
    reload_.setHelp(showsStop_ ? "Stop" : "Reload (⌘R)");
}

}  // namespace orvu
