#pragma once

#include "assistant/KestoPanel.h"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/entry.h>
#include <gtkmm/label.h>
#include <gtkmm/overlay.h>
#include <gtkmm/scrolledwindow.h>
#include <gtkmm/textview.h>

namespace orvu {

/// The form for a skill of the person's own.
class KestoSkillForm : public Gtk::Box {
public:
    /// `panel` must outlive the form.
    explicit KestoSkillForm(KestoPanel& panel);
    ~KestoSkillForm() override { notify_callbacks(); }

    void refresh();
    void focusName() { name_.grab_focus(); }

private:
    void addName();
    void addInstruction();
    void addButtons();
    [[nodiscard]] std::string instruction() const;

    KestoPanel& panel_;
    Gtk::Box nameLine_;
    Gtk::Entry name_;
    Gtk::Overlay field_;
    Gtk::ScrolledWindow scroller_;
    Gtk::TextView instruction_;
    Gtk::Label prompt_;
    Gtk::Box buttons_;
    Gtk::Button cancel_;
    Gtk::Button save_;
};

}  // namespace orvu
