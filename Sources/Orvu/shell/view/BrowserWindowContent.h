#pragma once

#include "core/ActiveTabWatch.h"
#include "look/view/FrameRefresh.h"
#include "notch/AddressNotch.h"
#include "notch/view/AddressNotchView.h"
#include "shell/view/BrowserFrame.h"
#include "shell/pagearea/view/BrowserPageCard.h"
#include "shell/column/view/BrowserTabColumn.h"
#include "shell/topbar/view/BrowserTopBar.h"
#include "shell/view/NotchScrim.h"

#include <gtkmm/overlay.h>
#include <gtkmm/windowhandle.h>

#include <memory>

namespace orvu {

/// The content of a browser window: the desk, and on it the top bar, the column of tabs and the
/// page area, with the notch over them, all of one store.
class BrowserWindowContent : public Gtk::Overlay {
public:
    /// `narrow` is the window's; it and `services` outlive the view.
    BrowserWindowContent(const std::shared_ptr<BrowserStore>& store, NarrowColumn& narrow,
                         AppServices& services);
    ~BrowserWindowContent() override;

    /// Gives the keyboard to the tab in front.
    void focusContent() { page_.focusContent(); }
    [[nodiscard]] AddressNotch& notch() { return notch_; }
    /// Opens the notch with `text`; in a notch that is open already, it takes the text's place.
    void editAddress(const std::string& text);
    /// Opens the search bar over the page, with the keyboard in it. While two pages stand side by
    /// side it doesn't show.
    void openFind() { page_.openFind(); }
    /// Goes on to the next match, or the previous one; opens the bar if it is closed.
    void findAgain(bool backwards) { page_.findAgain(backwards); }
    /// Shows the time line of the day, with the keyboard in it.
    void openRewind() { topBar_.navigation().openRewind(); }
    /// Closes the notch and the search bar or, if both are closed, what the page in front asks for. False if there is
    /// neither.
    bool endEditing();
    /// Moves the keyboard among the address, the column, the divider of a pair, what the page asks
    /// for and the page, so many places on, or back if negative.
    void moveFocus(int areas);

private:
    static constexpr int notchMargin = 8;  ///< between the closed notch and the bar's parts

    void addNotch();
    void refresh();
    void focusNewFront();
    void setElementFullscreen(bool on);

    const std::shared_ptr<BrowserStore> store_;
    AddressNotch notch_;
    std::unique_ptr<BrowserFrame> frame_;
    Gtk::Box column_{Gtk::Orientation::VERTICAL};
    Gtk::WindowHandle bar_;
    Gtk::Box row_;
    BrowserTopBar topBar_;
    BrowserTabColumn tabs_;
    BrowserPageCard page_;
    NotchScrim scrim_;
    AddressNotchView notchView_;
    std::weak_ptr<BrowserTab> front_;  ///< the tab that the keyboard followed last
    FrameRefresh refresh_;
    ActiveTabWatch watch_;
};

}  // namespace orvu
