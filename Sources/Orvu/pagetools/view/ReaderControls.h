#pragma once

#include "foundation/text/Translation.h"
#include "pagetools/ReaderLook.h"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/image.h>
#include <gtkmm/label.h>

#include <array>
#include <functional>

namespace orvu {

/// The bar at the foot of the reader: the way out, and behind a button of their own the size of
/// the text and the colours.
class ReaderControls : public Gtk::Box {
public:
    /// `look` must outlive this.
    ReaderControls(ReaderLook& look, std::function<void()> close);

    /// Shows which theme is in use.
    void refresh();

private:
    void addSizeButton(Gtk::Button& button, const std::string& name, const std::string& style);
    void addThemeButtons();
    void addOpener();
    void addExit();
    void toggleControls();

    ReaderLook& look_;
    const std::function<void()> close_;
    Gtk::Box controls_;
    Gtk::Button smaller_{"A"};
    Gtk::Button larger_{"A"};
    std::array<Gtk::Button, readerThemes.size()> themes_;
    Gtk::Button opener_{"Aa"};
    Gtk::Button exit_;
    Gtk::Box exitContent_;
    Gtk::Image book_;
    Gtk::Label exitLabel_{phrase("Exit Reader").c_str()};
};

}  // namespace orvu
