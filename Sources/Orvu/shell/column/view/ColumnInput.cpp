#include "shell/column/view/ColumnInput.h"

#include "look/view/Keyboard.h"

#include <gdk/gdkkeysyms.h>
#include <gtkmm/eventcontrollerkey.h>
#include <gtkmm/gestureclick.h>

namespace orvu {

ColumnInput::ColumnInput(Gtk::Widget& part, ContextMenu& menu, LineAt lineAt, OtherKey otherKey)
    : part_(part), menu_(menu), lineAt_(std::move(lineAt)), otherKey_(std::move(otherKey)) {
    const auto keys = Gtk::EventControllerKey::create();
    keys->signal_key_pressed().connect(sigc::mem_fun(*this, &ColumnInput::keyPressed), false);
    part_.add_controller(keys);
    for (const unsigned button : {unsigned{GDK_BUTTON_MIDDLE}, unsigned{GDK_BUTTON_SECONDARY}}) {
        const auto click = Gtk::GestureClick::create();
        click->set_button(button);
        const auto pressed = sigc::mem_fun(*this, &ColumnInput::pointerPressed);
        click->signal_pressed().connect(
            [pressed, button](int, double x, double y) { pressed(button, x, y); });
        part_.add_controller(click);
    }
}

bool ColumnInput::keyPressed(guint key, guint, Gdk::ModifierType modifiers) {
    using Modifier = Gdk::ModifierType;
    const auto held = modifiers & (Modifier::SHIFT_MASK | Modifier::CONTROL_MASK |
                                   Modifier::ALT_MASK | Modifier::SUPER_MASK);
    ColumnLine* const line = lineAt_(focusOf(part_));
    if (!line || line->isEditing()) return false;
    if (key == GDK_KEY_F10 && held == Modifier::SHIFT_MASK) {
        openMenu(*line);
        return true;
    }
    if (held != Modifier{}) return false;
    switch (key) {
        case GDK_KEY_Menu:
            openMenu(*line);
            return true;
        case GDK_KEY_Delete:
        case GDK_KEY_KP_Delete:
            claimsFocus_ = line->isTab();
            line->remove();
            return true;
        default:
            return otherKey_ && otherKey_(key, *line);
    }
}

void ColumnInput::pointerPressed(unsigned button, double x, double y) {
    ColumnLine* const line = lineAt_(part_.pick(x, y));
    if (!line) return;
    if (button == GDK_BUTTON_MIDDLE) return line->remove();
    menu_.show(line->contextMenu(), part_, {static_cast<int>(x), static_cast<int>(y), 1, 1});
}

void ColumnInput::openMenu(ColumnLine& line) {
    Gtk::Widget& widget = line.widget();
    menu_.show(line.contextMenu(), widget, {0, 0, widget.get_width(), widget.get_height()});
}

}  // namespace orvu
