#include "shell/pagearea/view/SplitDivider.h"

#include "foundation/text/Translation.h"
#include "look/view/Accessible.h"

#include <gtkmm/binlayout.h>
#include <gtkmm/eventcontrollerkey.h>

namespace orvu {

SplitDivider::SplitDivider() {
    property_accessible_role() = Gtk::Accessible::Role::SEPARATOR;
    setAccessibleLabel(*this, phrase("Resize the two pages"));
    add_css_class("split-divider");
    set_focusable(true);
    set_cursor("col-resize");
    handle_.add_css_class("split-handle");
    handle_.set_halign(Gtk::Align::CENTER);
    handle_.set_valign(Gtk::Align::CENTER);
    set_layout_manager(Gtk::BinLayout::create());
    handle_.set_parent(*this);
    const auto keys = Gtk::EventControllerKey::create();
    keys->signal_key_pressed().connect(sigc::mem_fun(*this, &SplitDivider::keyPressed), false);
    add_controller(keys);
}

bool SplitDivider::keyPressed(guint key, guint, Gdk::ModifierType) {
    const int step = key == GDK_KEY_Left ? -1 : key == GDK_KEY_Right ? +1 : 0;
    if (step == 0) return false;
    stepped_.emit(step);
    return true;
}

}  // namespace orvu
