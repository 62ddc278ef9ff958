#pragma once

#include <gtkmm/box.h>

#include <string>

namespace orvu {

/// The picture of another browser: its icon in the menu of the desktop, where it is installed, else
/// a tile with its first letter.
class BrowserMark : public Gtk::Box {
public:
    static constexpr int iconSize = 44;  ///< points
    static constexpr int tileSize = 40;  ///< points

    /// `id` is that of a known browser.
    BrowserMark(const std::string& id, const std::string& name);
};

}  // namespace orvu
