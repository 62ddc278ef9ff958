#pragma once

#include "look/view/FrameRefresh.h"
#include "profiles/ProfileSwitcher.h"
#include "shell/menus/view/ContextMenu.h"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/scrolledwindow.h>

#include <vector>

namespace orvu {

/// The tiles of the profiles in a row, or one over the other, and the one that makes a new profile.
/// Where they need more room than there is, they scroll.
class ProfileSwitcherView : public Gtk::ScrolledWindow {
public:
    /// `switcher` and `menu`, whose parent this stands in, must outlive the view.
    ProfileSwitcherView(ProfileSwitcher& switcher, ContextMenu& menu);

    void setNarrow(bool narrow);

private:
    void addTile(const ProfileSwitcher::Tile& tile);
    void addNewProfile();
    void addMenuKeys();
    void openMenu(const Uuid& id, Gtk::Widget& tile);
    void refresh();

    ProfileSwitcher& switcher_;
    ContextMenu& menu_;
    Gtk::Box row_;
    std::vector<ProfileSwitcher::Tile> tiles_;  ///< what is drawn
    std::vector<Gtk::Widget*> buttons_;         ///< one for each
    FrameRefresh refresh_;
};

}  // namespace orvu
