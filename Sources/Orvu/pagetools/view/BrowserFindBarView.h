#pragma once

#include "foundation/text/Translation.h"
#include "pagetools/BrowserFindBar.h"
#include "look/controls/view/BrowserChromeButton.h"

#include <gtkmm/box.h>
#include <gtkmm/entry.h>
#include <gtkmm/image.h>
#include <gtkmm/label.h>

#include <functional>

namespace orvu {

/// The small bar over a page in which a text to find is typed.
class BrowserFindBarView : public Gtk::Box {
public:
    /// `close` is called when the person has done with the bar; it may end it.
    BrowserFindBarView(BrowserFindBar::Search search, std::function<void()> close);

    /// Takes the keyboard, with the whole text selected.
    void focusField() { field_.grab_focus(); }
    void find(bool backwards) { bar_.find(backwards); }

private:
    void addField();
    void addButtons();
    bool keyPressed(guint key, Gdk::ModifierType held);
    void showStatus();

    BrowserFindBar bar_;
    const std::function<void()> close_;
    Gtk::Image lens_;
    Gtk::Entry field_;
    Gtk::Label status_;
    BrowserChromeButton previous_{"chevron.up", phrase("Previous match")};
    BrowserChromeButton next_{"chevron.down", phrase("Next match")};
    BrowserChromeButton end_{"xmark", phrase("Close find")};
};

}  // namespace orvu
