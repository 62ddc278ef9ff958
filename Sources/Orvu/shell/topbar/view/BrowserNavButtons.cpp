#include "shell/topbar/view/BrowserNavButtons.h"

#include "foundation/text/Translation.h"
#include "look/view/Accessible.h"
#include "look/view/Pointer.h"
#include "look/view/Tooltips.h"

#include <gdk/gdkkeysyms.h>
#include <gtkmm/eventcontrollerkey.h>
#include <gtkmm/eventcontrollermotion.h>
#include <gtkmm/gestureclick.h>
#include <gtkmm/window.h>

namespace orvu {

BrowserNavButtons::BrowserNavButtons(BrowserView& view)
    : view_(view),
      store_(view.store()),
      rewind_(view.sharedStore()),
      refresh_(*this, [this] { refresh(); }),
      watch_(store_, [this] { refresh_.mark(); }) {
    // Not as the buttons' own actions: these would switch them on whatever the tab can do.
    back_.signal_clicked().connect([this] { activate_action("win.goBack"); });
    forward_.signal_clicked().connect([this] { activate_action("win.goForward"); });
    reload_.signal_clicked().connect(
        [this] { activate_action(showsStop_ ? "win.stopLoading" : "win.reload"); });
    backPlace_.append(back_);
    append(backPlace_);
    append(forward_);
    append(reload_);
    addRewind();
    refresh();
}

BrowserNavButtons::~BrowserNavButtons() {
    notify_callbacks();
    rewind_.unparent();
}

void BrowserNavButtons::addRewind() {
    rewind_.set_hexpand(false);  // or its rows would widen the bar's part around it
    rewind_.set_parent(backPlace_);
    hideTooltipWhileOpen(back_, rewind_);
    rewind_.connectChanged(sigc::mem_fun(*this, &BrowserNavButtons::rewindChanged));
    rewind_.connectKeyboardLeft(sigc::mem_fun(view_, &BrowserView::focusPage));
    view_.connectRewindRequested(
        sigc::bind(sigc::mem_fun(rewind_, &RewindPopover::open), RewindPopover::Keyboard::comes));
    const auto motion = Gtk::EventControllerMotion::create();
    motion->signal_enter().connect([this](double, double) { pointerCame(); });
    backPlace_.add_controller(motion);
    const auto press = Gtk::GestureClick::create();
    press->set_button(GDK_BUTTON_SECONDARY);
    press->signal_pressed().connect(
        [this](int, double, double) { rewind_.open(RewindPopover::Keyboard::stays); });
    backPlace_.add_controller(press);
    const auto keys = Gtk::EventControllerKey::create();
    keys->signal_key_pressed().connect(
        [this](guint key, guint, Gdk::ModifierType) { return keyPressed(key); }, false);
    back_.add_controller(keys);
}

void BrowserNavButtons::pointerCame() {
    // A pointer that crosses a window in the background wants nothing from it.
    const auto* const window = dynamic_cast<const Gtk::Window*>(get_root());
    const bool isWanted = window && window->is_active() && isPointerOver(backPlace_);
    if (isWanted) rewind_.open(RewindPopover::Keyboard::stays);
}

bool BrowserNavButtons::keyPressed(guint key) {
    if (key != GDK_KEY_Down && key != GDK_KEY_Menu) return false;
    rewind_.open(RewindPopover::Keyboard::comes);
    return true;
}

void BrowserNavButtons::rewindChanged() { setAccessibleExpanded(back_, rewind_.isOpen()); }

void BrowserNavButtons::refresh() {
    const auto tab = store_.active();
    set_visible(tab != nullptr);
    if (!tab) return;
    back_.set_sensitive(tab->canGoBack());
    forward_.set_sensitive(tab->canGoForward());
    reload_.set_sensitive(!tab->isNewTab());
    if (showsStop_ == tab->isLoading()) return;
    showsStop_ = tab->isLoading();
    reload_.setSymbol(showsStop_ ? "xmark" : "arrow.clockwise");
    reload_.setHelp(showsStop_ ? phrase("Stop") : phrase("Reload (⌘R)"));
}

}  // namespace orvu
