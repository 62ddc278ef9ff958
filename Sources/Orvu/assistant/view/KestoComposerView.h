#pragma once

#include "assistant/KestoPanel.h"
#include "assistant/view/KestoSkillForm.h"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/entry.h>
#include <gtkmm/image.h>
#include <gtkmm/scrolledwindow.h>

#include <string>
#include <vector>

namespace orvu {

/// Where a question is typed: the field, the tabs that were brought in, and above them the skills,
/// the tabs that can be brought in, or the form for a new skill.
class KestoComposerView : public Gtk::Box {
public:
    /// `panel` must outlive the view.
    explicit KestoComposerView(KestoPanel& panel);
    ~KestoComposerView() override { notify_callbacks(); }

    void refresh();
    void focusField();

private:
    void addMentions();
    void addInput();
    void textChanged();
    void focusChanged();
    void refreshMenu();
    void refreshMentions();
    /// Puts in what there is something to show for.
    void showParts();
    void addSkills();
    void addTabs();
    void addHeading(std::string_view title);
    void clearMenu();
    [[nodiscard]] std::vector<std::string> menuKeys() const;
    /// A key in the field.
    bool keyPressed(guint key);
    /// A key in the rows over it.
    bool menuKeyPressed(guint key);

    KestoPanel& panel_;
    Gtk::ScrolledWindow menuScroller_;  ///< for more rows than there is room for
    Gtk::Box menu_;
    KestoSkillForm form_;
    Gtk::ScrolledWindow mentionsScroller_;
    Gtk::Box mentions_;
    Gtk::Box input_;
    Gtk::Entry field_;
    Gtk::Button send_;
    Gtk::Image arrow_;
    std::vector<std::string> shownMenu_;      ///< what the rows stand for
    std::vector<std::string> shownMentions_;  ///< what the chips stand for
};

}  // namespace orvu
