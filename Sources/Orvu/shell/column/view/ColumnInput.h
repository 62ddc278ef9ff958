#pragma once

#include "shell/column/view/ColumnLine.h"
#include "shell/menus/view/ContextMenu.h"

#include <functional>
#include <optional>
#include <utility>

namespace orvu {

/// What keys and the pointer do with whatever line of a part of the column they are on: the middle
/// button and Delete remove it; the secondary button, the Menu key and Shift+F10 open its menu.
class ColumnInput : public sigc::trackable {
public:
    /// The line that a widget is or belongs to; null if it is none of the part's.
    using LineAt = std::function<ColumnLine*(Gtk::Widget*)>;
    /// A further key without modifiers, on a line. False if the part has no use for it.
    using OtherKey = std::function<bool(guint key, ColumnLine& line)>;

    /// `part`, whose children the lines are, and `menu` must outlive this.
    ColumnInput(Gtk::Widget& part, ContextMenu& menu, LineAt lineAt, OtherKey otherKey = {});
    ColumnInput(const ColumnInput&) = delete;
    ColumnInput& operator=(const ColumnInput&) = delete;

    /// Whether the last change was asked for by a key that closes the tab with the keyboard, which
    /// is to stay in the part. Answers once.
    [[nodiscard]] bool takeFocusClaim() { return std::exchange(claimsFocus_, false); }

private:
    bool keyPressed(guint key, guint code, Gdk::ModifierType modifiers);
    void pointerPressed(unsigned button, double x, double y);
    void openMenu(ColumnLine& line);

    Gtk::Widget& part_;
    ContextMenu& menu_;
    const LineAt lineAt_;
    const OtherKey otherKey_;
    bool claimsFocus_ = false;
};

}  // namespace orvu
