#pragma once

#include "profiles/ProfileEditor.h"
#include "shell/profiles/view/ProfilePreview.h"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/entry.h>
#include <gtkmm/flowbox.h>
#include <gtkmm/label.h>
#include <gtkmm/scrolledwindow.h>

#include <map>
#include <string_view>
#include <vector>

namespace orvu {

/// The sheet in which a profile is created or changed: a preview at the left, and at the right its
/// name, its colour and its symbol. Arrows go among colours and symbols and choose them; Return
/// saves.
class ProfileEditorView : public Gtk::Box {
public:
    /// `editor` must outlive the view.
    explicit ProfileEditorView(ProfileEditor& editor);
    ~ProfileEditorView() override;

    /// Gives the keyboard to the field of the name.
    void focusName() { name_.grab_focus(); }

private:
    void addName();
    void addColors();
    void addSearch();
    void addIcons();
    void addButtons();
    void addKeys(Gtk::FlowBox& choices, Gtk::Widget& before, Gtk::Widget& after);
    void showIcons();
    void showChosen();
    void refresh();

    ProfileEditor& editor_;
    ProfilePreview preview_;
    Gtk::Box fields_;
    Gtk::Entry name_;
    Gtk::FlowBox colors_;
    Gtk::Label count_;
    Gtk::Entry search_;
    Gtk::ScrolledWindow scroller_;
    Gtk::FlowBox grid_;
    std::map<std::string_view, Gtk::FlowBoxChild*>
        cells_;  ///< of all symbols, also those not shown
    std::vector<std::string_view> shown_;
    std::vector<Gtk::FlowBoxChild*> circles_;
    Gtk::Box buttons_;
    Gtk::Button cancel_{std::string{ProfileEditor::cancelTitle}};
    Gtk::Button save_;
};

}  // namespace orvu
