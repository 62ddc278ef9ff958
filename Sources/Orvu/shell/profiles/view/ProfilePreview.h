#pragma once

#include "look/drawing/view/DottedPaperView.h"
#include "profiles/ProfileEditor.h"

#include <gtkmm/box.h>
#include <gtkmm/image.h>
#include <gtkmm/label.h>
#include <gtkmm/overlay.h>

namespace orvu {

/// A window in miniature, as it will look in the profile that is edited.
class ProfilePreview : public Gtk::Overlay {
public:
    /// `editor` must outlive the preview.
    explicit ProfilePreview(ProfileEditor& editor);

    void refresh();

private:
    void addControls();
    void addPage();

    ProfileEditor& editor_;
    DottedPaperView desk_;
    Gtk::Box window_;
    Gtk::Box page_;
    Gtk::Box tile_;
    Gtk::Image symbol_;
    Gtk::Label name_;
};

}  // namespace orvu
