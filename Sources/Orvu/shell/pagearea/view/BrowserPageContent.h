#pragma once

#include "foundation/Signal.h"
#include "look/view/FrameRefresh.h"
#include "pagetools/view/ReaderView.h"
#include "platform/linux/web/WebViewHost.h"
#include "shell/BrowserView.h"
#include "shell/pagearea/view/BrowserNewTabPageView.h"
#include "shell/pagearea/view/LinkAddressView.h"
#include "shell/pagearea/view/PageDialogView.h"
#include "shell/pagearea/view/PageNoticeView.h"
#include "shell/pagearea/view/PageQuestionView.h"
#include "shell/pagearea/view/ResultsFrame.h"

#include <gtkmm/box.h>
#include <gtkmm/overlay.h>

#include <memory>
#include <optional>
#include <vector>

namespace orvu {

/// The card that shows one tab: its page with what that asks for, the page's article, or the new tab
/// page; around a page of search results what `ResultsFrame` has.
class BrowserPageContent : public Gtk::Box {
public:
    /// `view` must outlive this.
    explicit BrowserPageContent(BrowserView& view);
    ~BrowserPageContent() override;

    /// Shows `tab`. True if another page, another empty tab or another article stands here now.
    bool show(const std::shared_ptr<BrowserTab>& tab);
    /// Gives the keyboard to the page, to its article or to the field of the new tab page.
    void focusContent();
    /// Looks for a text in the page or its article. Nothing without a tab.
    [[nodiscard]] std::optional<Future<bool>> find(const std::string& text, FindConfiguration how);
    /// The parts beside the page that the keyboard can go to now, in their order.
    [[nodiscard]] std::vector<Gtk::Widget*> areas();

private:
    void showNewTabPage(const std::optional<Uuid>& tab);
    void watch(const std::shared_ptr<BrowserTab>& tab);
    bool showReader(const std::shared_ptr<BrowserTab>& tab);
    void openReader(std::shared_ptr<const ReaderArticle> article);
    void leaveReader();
    void dropReader();
    void refresh();
    void pageChanged(WebViewProperty property);
    void showLink();
    void selectTab();
    void fullscreenChanged(bool on);
    void dialogsChanged();
    void updatePageFocus();

    BrowserView& view_;
    const std::shared_ptr<BrowserStore> store_;
    WebViewHost host_;
    std::unique_ptr<BrowserNewTabPageView> newTabPage_;
    std::optional<Uuid> newTab_;  ///< the empty tab that `newTabPage_` stands for
    LinkAddressView link_{host_};
    PageQuestionView question_;
    PageNoticeView notice_;
    PageDialogView dialogs_;  ///< over all else
    Gtk::Overlay stack_;      ///< all of these
    ResultsFrame frame_;
    std::weak_ptr<BrowserTab> tab_;
    std::unique_ptr<ReaderView> reader_;  ///< also while it fades out
    bool isReading_ = false;
    FrameRefresh refresh_;
    ScopedConnection tabChanged_;
    ScopedConnection pageChanged_;
    ScopedConnection menuChosen_;
    ScopedConnection readerFocused_;
};

}  // namespace orvu
