#pragma once

#include "profiles/ProfileSwitcher.h"
#include "shell/profiles/view/ProfileEditorView.h"
#include "shell/profiles/view/ProfileQuestionView.h"

#include <gtkmm/box.h>

#include <memory>

namespace orvu {

/// What stands over the whole window while a profile is created, changed or about to be deleted: a
/// veil, and on it the sheet or the question. Escape cancels.
class ProfileSheets : public Gtk::Box {
public:
    /// `switcher` must outlive this.
    explicit ProfileSheets(ProfileSwitcher& switcher);
    ~ProfileSheets() override;

    /// Makes what is wanted now and gives it the keyboard, once this is in a window.
    void show();

private:
    void addKeys();
    void cancel();
    void setCard(Gtk::Widget& card, const std::string& name);

    ProfileSwitcher& switcher_;
    Gtk::Box card_;
    std::unique_ptr<ProfileEditor> editor_;
    std::unique_ptr<ProfileEditorView> sheet_;
    std::unique_ptr<ProfileQuestionView> question_;
};

}  // namespace orvu
