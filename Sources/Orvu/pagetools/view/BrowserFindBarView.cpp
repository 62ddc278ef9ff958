#include "pagetools/view/BrowserFindBarView.h"

#include "look/view/Accessible.h"
#include "look/view/CssClass.h"
#include "look/view/Keyboard.h"
#include "look/view/SymbolImage.h"

#include <gdk/gdkkeysyms.h>
#include <gtkmm/eventcontrollerkey.h>

#include <utility>

namespace orvu {
namespace {

constexpr int lensSize = 12;
constexpr int fieldWidth = 180;
constexpr int spacing = 6;

}  // namespace

BrowserFindBarView::BrowserFindBarView(BrowserFindBar::Search search, std::function<void()> close)
    : Gtk::Box(Gtk::Orientation::HORIZONTAL, spacing),
      bar_(std::move(search)),
      close_(std::move(close)) {
    add_css_class("find-bar");
    property_accessible_role() = Gtk::Accessible::Role::SEARCH;
    setAccessibleLabel(*this, std::string{BrowserFindBar::prompt});
    set_halign(Gtk::Align::END);
    set_valign(Gtk::Align::START);
    addField();
    addButtons();
    bar_.connectChanged(sigc::mem_fun(*this, &BrowserFindBarView::showStatus));
    showStatus();
}

void BrowserFindBarView::addField() {
    setSymbol(lens_, "magnifyingglass", lensSize);
    append(lens_);
    const std::string prompt{BrowserFindBar::prompt};
    field_.add_css_class("find-field");
    field_.set_placeholder_text(prompt);
    setAccessibleLabel(field_, prompt);
    field_.set_width_chars(1);
    field_.set_size_request(fieldWidth, -1);
    field_.set_hexpand(false);
    field_.signal_changed().connect([this] {
        bar_.setText(field_.get_text().raw());
        showStatus();
    });
    field_.signal_activate().connect([this] { bar_.find(false); });
    const auto keys = Gtk::EventControllerKey::create();
    keys->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
    keys->signal_key_pressed().connect(
        [this](guint key, guint, Gdk::ModifierType held) { return keyPressed(key, held); }, false);
    field_.add_controller(keys);
    append(field_);
    status_.add_css_class("find-status");
    status_.property_accessible_role() = Gtk::Accessible::Role::STATUS;
    append(status_);
}

void BrowserFindBarView::addButtons() {
    previous_.signal_clicked().connect([this] { bar_.find(true); });
    next_.signal_clicked().connect([this] { bar_.find(false); });
    end_.signal_clicked().connect([this] { std::function{close_}(); });
    for (auto* const button : {&previous_, &next_, &end_}) {
        button->set_focus_on_click(false);  // typing goes on in the field
        append(*button);
    }
}

bool BrowserFindBarView::keyPressed(guint key, Gdk::ModifierType held) {
    const bool shift = (held & Gdk::ModifierType::SHIFT_MASK) == Gdk::ModifierType::SHIFT_MASK;
    if (key == GDK_KEY_Escape) {
        std::function{close_}();  // a copy: the call may end this
        return true;
    }
    if (shift && isReturnKey(key)) {
        bar_.find(true);
        return true;
    }
    return false;
}

void BrowserFindBarView::showStatus() {
    const std::string text{bar_.status()};
    status_.set_visible(!text.empty());
    setCssClass(status_, "bad", bar_.found() == false);
    if (status_.get_text().raw() == text) return;
    status_.set_text(text);
    setAccessibleLabel(status_, text);
}

}  // namespace orvu
