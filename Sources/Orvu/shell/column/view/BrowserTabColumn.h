#pragma once

#include "foundation/text/Translation.h"
#include "look/view/FrameRefresh.h"
#include "shell/BrowserView.h"
#include "shell/menus/view/ContextMenu.h"
#include "shell/profiles/view/ProfileSwitcherView.h"
#include "shell/column/view/PinnedTiles.h"
#include "shell/column/view/TabList.h"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/image.h>
#include <gtkmm/label.h>
#include <gtkmm/scrolledwindow.h>

#include <memory>

namespace orvu {

/// The left column of a window: a button for new tabs, the pinned tabs, the list of groups and
/// tabs, and at the foot the profiles and the switch between titles and icons.
class BrowserTabColumn : public Gtk::Box {
public:
    /// `view` must outlive the column.
    explicit BrowserTabColumn(BrowserView& view);

    /// Whether the keyboard is to stay in the column although another tab came to the front,
    /// because a key closed a tab there. Answers once for each change.
    [[nodiscard]] bool takeFocusClaim();

private:
    void addNewTabButton();
    void addTiles();
    void addFoot();
    void newTab();
    void refresh();
    void showWidth();
    void showFoot();

    BrowserView& view_;
    Gtk::Button newTab_;
    Gtk::Box newTabLine_;
    Gtk::Image plus_;
    Gtk::Label newTabTitle_{phrase("New tab").c_str()};
    Gtk::Label newTabKeys_;
    Gtk::ScrolledWindow tileScroll_;
    Gtk::Label today_{phrase("TODAY").c_str()};
    Gtk::Box foot_;
    std::unique_ptr<ProfileSwitcherView> profiles_;  ///< none in a private window
    Gtk::Button width_;
    Gtk::Box widthLine_;
    Gtk::Image sidebar_;
    Gtk::Label widthTitle_{phrase("Narrow tabs").c_str()};
    ContextMenu menu_;
    PinnedTiles tiles_;
    TabList list_;
    FrameRefresh refresh_;
};

}  // namespace orvu
