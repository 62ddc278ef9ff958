#include "update/view/UpdateStatusRow.h"

#include "look/view/Keyboard.h"

#include <string>

namespace orvu {

UpdateStatusRow::UpdateStatusRow(UpdateStatus& status) : status_(status) {
    add_css_class("settings-row");
    texts_.set_hexpand(true);
    texts_.set_valign(Gtk::Align::CENTER);
    title_.set_text(status_.title());
    line_.add_css_class("settings-status");
    for (auto* const label : {&title_, &line_}) {
        label->set_xalign(0);
        label->set_wrap(true);
        label->set_wrap_mode(Pango::WrapMode::WORD_CHAR);
        texts_.append(*label);
    }
    append(texts_);
    button_.add_css_class("settings-button");
    button_.set_valign(Gtk::Align::CENTER);
    button_.signal_clicked().connect([this] { status_.press(); });
    append(button_);
    status_.connectChanged(sigc::mem_fun(*this, &UpdateStatusRow::refresh));
    refresh();
}

void UpdateStatusRow::refresh() {
    line_.set_text(status_.line());
    button_.set_label(std::string{status_.buttonTitle()});
    setEnabled(status_.isEnabled());
}

/// A button that is disabled loses the keyboard, and gets it back if nothing else took it.
void UpdateStatusRow::setEnabled(bool enabled) {
    if (enabled == button_.get_sensitive()) return;
    if (!enabled) hadKeyboard_ = holdsKeyboard(button_);
    button_.set_sensitive(enabled);
    if (enabled && hadKeyboard_ && !focusOf(*this)) button_.grab_focus();
}

}  // namespace orvu
