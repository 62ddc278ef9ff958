#pragma once

#include "look/view/FrameRefresh.h"
#include "shell/view/ActiveTabWatch.h"
#include "shell/view/BrowserFrame.h"
#include "shell/view/BrowserPageCard.h"
#include "shell/view/BrowserTabColumn.h"
#include "shell/view/BrowserTopBar.h"

#include <gtkmm/overlay.h>
#include <gtkmm/windowhandle.h>

#include <memory>

namespace orvu {

/// The content of a browser window: the desk, and on it the top bar, the column of tabs and the
/// page area, all of one store.
class BrowserView : public Gtk::Overlay {
public:
    /// `narrow` is the window's, and outlives the view.
    BrowserView(const std::shared_ptr<BrowserStore>& store, NarrowColumn& narrow);
    ~BrowserView() override;

    /// Gives the keyboard to the tab in front.
    void focusContent() { page_.focusContent(); }
    [[nodiscard]] AddressField& address() { return topBar_.address(); }
    /// Moves the keyboard among the address, the column, the divider of a pair and the page, so
    /// many places on, or back if negative.
    void moveFocus(int areas);

private:
    void refresh();
    void focusNewFront();
    void setElementFullscreen(bool on);

    const std::shared_ptr<BrowserStore> store_;
    std::unique_ptr<BrowserFrame> frame_;
    Gtk::Box column_{Gtk::Orientation::VERTICAL};
    Gtk::WindowHandle bar_;
    Gtk::Box row_;
    BrowserTopBar topBar_;
    BrowserTabColumn tabs_;
    BrowserPageCard page_;
    std::weak_ptr<BrowserTab> front_;  ///< the tab that the keyboard followed last
    FrameRefresh refresh_;
    ActiveTabWatch watch_;
};

}  // namespace orvu
