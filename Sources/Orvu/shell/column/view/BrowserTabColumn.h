#pragma once

#include "core/BrowserStore.h"
#include "look/view/FrameRefresh.h"
#include "shell/column/NarrowColumn.h"
#include "shell/menus/view/ContextMenu.h"
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
/// tabs, and the switch between titles and icons.
class BrowserTabColumn : public Gtk::Box {
public:
    /// `narrow` is the window's; it outlives the column.
    BrowserTabColumn(std::shared_ptr<BrowserStore> store, NarrowColumn& narrow);

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

    const std::shared_ptr<BrowserStore> store_;
    NarrowColumn& narrow_;
    Gtk::Button newTab_;
    Gtk::Box newTabLine_;
    Gtk::Image plus_;
    Gtk::Label newTabTitle_{"New tab"};
    Gtk::Label newTabKeys_;
    Gtk::ScrolledWindow tileScroll_;
    Gtk::Label today_{"TODAY"};
    Gtk::Box foot_;
    Gtk::Button width_;
    Gtk::Box widthLine_;
    Gtk::Image sidebar_;
    Gtk::Label widthTitle_{"Narrow tabs"};
    ContextMenu menu_;
    PinnedTiles tiles_;
    TabList list_;
    FrameRefresh refresh_;
};

}  // namespace orvu
