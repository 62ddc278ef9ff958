#pragma once

#include "look/view/FrameRefresh.h"
#include "shell/pagearea/view/BrowserPageContent.h"
#include "shell/siteinfo/view/CaptureDot.h"
#include "site/icons/view/BrowserSiteBadge.h"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/image.h>
#include <gtkmm/label.h>

#include <memory>

namespace orvu {

/// One of the two panes of a pair: a header with the tab's title, and its card.
class PagePane : public Gtk::Box {
public:
    /// The second pane's header ends the pair.
    enum class Place { first, second };

    /// `view` must outlive the pane.
    PagePane(BrowserView& view, Place place);

    /// Shows `tab`, which may be nothing. True if another page stands here now.
    bool show(const std::shared_ptr<BrowserTab>& tab);
    [[nodiscard]] std::shared_ptr<BrowserTab> shown() const { return tab_.lock(); }
    [[nodiscard]] BrowserPageContent& content() { return content_; }
    /// While its page fills the screen a pane has no header.
    void setFullscreen(bool on) { header_.set_visible(!on); }

private:
    static constexpr int iconSize = 14;

    void addHeader(Place place);
    void refresh();
    void select();

    const std::shared_ptr<BrowserStore> store_;
    std::weak_ptr<BrowserTab> tab_;
    Gtk::Box header_;
    BrowserSiteBadge icon_;
    Gtk::Button titleButton_;
    Gtk::Label title_;
    CaptureDot dot_;
    Gtk::Button close_;
    Gtk::Image cross_;
    BrowserPageContent content_;
    FrameRefresh refresh_;
    ScopedConnection tabChanged_;
};

}  // namespace orvu
