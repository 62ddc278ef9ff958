#pragma once

#include "core/ActiveTabWatch.h"
#include "look/view/FrameRefresh.h"
#include "notch/AddressNotch.h"
#include "notch/view/AddressNotchView.h"
#include "shell/BrowserView.h"
#include "shell/column/view/BrowserTabColumn.h"
#include "shell/pagearea/FullscreenNotice.h"
#include "shell/pagearea/view/BrowserPageCard.h"
#include "shell/profiles/view/ProfileSheets.h"
#include "shell/siteinfo/view/SiteInfoHead.h"
#include "shell/topbar/view/BrowserTopBar.h"
#include "shell/view/BrowserFrame.h"
#include "shell/view/KestoPanelPlace.h"
#include "shell/view/NotchScrim.h"
#include "update/view/UpdateAskView.h"

#include <gtkmm/label.h>
#include <gtkmm/overlay.h>
#include <gtkmm/windowhandle.h>

#include <memory>

namespace orvu {

/// The content of a browser window: the desk, and on it the top bar, the column of tabs and the
/// page area, with the notch over them.
class BrowserWindowContent : public Gtk::Overlay {
public:
    /// `view` must outlive the content.
    explicit BrowserWindowContent(BrowserView& view);
    ~BrowserWindowContent() override;

private:
    static constexpr int notchMargin = 8;  ///< between the closed notch and the bar's parts

    void addNotch();
    void refresh();
    void focusNewFront();
    /// Moves the keyboard among the address, the column, the divider of a pair, what the page asks
    /// for and the page, so many places on, or back if negative.
    void moveFocus(int areas);
    void addFullscreenNotice();
    void fullscreenChanged();
    void askUpdatesChanged();
    void addSheets();
    void sheetChanged();

    BrowserView& view_;
    AddressNotch notch_;
    std::unique_ptr<BrowserFrame> frame_;
    Gtk::Box column_{Gtk::Orientation::VERTICAL};
    Gtk::WindowHandle bar_;
    Gtk::Box row_;
    BrowserTopBar topBar_;
    BrowserTabColumn tabs_;
    BrowserPageCard page_;
    KestoPanelPlace kesto_;
    NotchScrim scrim_;
    SiteInfoHead siteHead_;
    AddressNotchView notchView_;
    FullscreenNotice fullscreenNotice_;
    Gtk::Label fullscreenLabel_;
    std::unique_ptr<UpdateAskView> updateAsk_;
    Scheduled removesUpdateAsk_;
    std::unique_ptr<ProfileSheets> sheets_;  ///< none in a private window
    std::weak_ptr<BrowserTab> front_;        ///< the tab that the keyboard followed last
    FrameRefresh refresh_;
    ActiveTabWatch watch_;
};

}  // namespace orvu
