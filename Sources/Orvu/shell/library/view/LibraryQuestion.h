#pragma once

#include "library/LibraryView.h"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/label.h>

#include <array>

namespace orvu {

/// The question how much of the history is to be cleared, on a card over the library. The keyboard
/// begins on the button that clears nothing.
class LibraryQuestion : public Gtk::Box {
public:
    /// `library` must outlive the question.
    explicit LibraryQuestion(LibraryView& library);

    void focusCancel() { buttons_.back().grab_focus(); }

private:
    Gtk::Box card_{Gtk::Orientation::VERTICAL};
    Gtk::Label heading_;
    Gtk::Box line_;
    std::array<Gtk::Button, LibraryView::clearAnswers.size()> buttons_;
};

}  // namespace orvu
