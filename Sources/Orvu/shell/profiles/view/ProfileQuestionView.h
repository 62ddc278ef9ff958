#pragma once

#include "profiles/ProfileSwitcher.h"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/label.h>

namespace orvu {

/// The question before a profile is deleted. The keyboard begins on the button that keeps it.
class ProfileQuestionView : public Gtk::Box {
public:
    /// `switcher` must outlive the view.
    ProfileQuestionView(ProfileSwitcher& switcher, const ProfileSwitcher::Question& question);

    void focusCancel() { cancel_.grab_focus(); }

private:
    Gtk::Label message_;
    Gtk::Label text_;
    Gtk::Box buttons_;
    Gtk::Button cancel_;
    Gtk::Button remove_;
};

}  // namespace orvu
