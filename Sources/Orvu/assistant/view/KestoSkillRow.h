#pragma once

#include "assistant/KestoPanel.h"

#include <giomm/menu.h>
#include <giomm/simpleactiongroup.h>
#include <gtkmm/button.h>
#include <gtkmm/popovermenu.h>

#include <memory>

namespace orvu {

/// A skill, to be run with a press. One of the person's own can be deleted by its menu.
class KestoSkillRow : public Gtk::Button {
public:
    /// `panel` must outlive the row.
    KestoSkillRow(KestoPanel& panel, KestoSkill skill);
    ~KestoSkillRow() override;

private:
    void addMenu();
    void openMenu();

    KestoPanel& panel_;
    const KestoSkill skill_;
    std::unique_ptr<Gtk::PopoverMenu> menu_;  ///< of the person's own alone
};

}  // namespace orvu
