#pragma once

#include "shell/menus/ColumnMenus.h"

#include <gtkmm/widget.h>

#include <vector>

namespace orvu {

/// Whether the Tab key stops at a line of the list.
enum class TabStop { no, yes };
/// Whether the column shows icons only.
enum class Narrow { no, yes };

/// One line of the list of tabs, or a pinned tile. Only one line of the list at a time is where the
/// Tab key stops; the arrows lead on from there.
class ColumnLine {
public:
    virtual ~ColumnLine() = default;

    [[nodiscard]] virtual Gtk::Widget& widget() = 0;
    /// Whether it is that of a tab. Those of the list all have the same height.
    [[nodiscard]] virtual bool isTab() const { return false; }
    /// Whether the line takes the keyboard at all.
    [[nodiscard]] virtual bool isFocusable() const { return true; }
    virtual void setTabStop(TabStop) {}
    virtual void takeFocus() {}
    /// Whether keys belong to a text field in the line now.
    [[nodiscard]] virtual bool isEditing() const { return false; }
    virtual void setNarrow(Narrow) {}
    /// The lines of its context menu. Empty: it has none.
    [[nodiscard]] virtual std::vector<MenuEntry> contextMenu() { return {}; }
    /// What the Delete key and the middle button do.
    virtual void remove() {}
    /// What F2 does.
    virtual void rename() {}
};

}  // namespace orvu
