#include "shell/library/view/LibraryQuestion.h"

#include "look/view/Accessible.h"

#include <gdk/gdkkeysyms.h>
#include <gtkmm/eventcontrollerkey.h>

#include <string>

namespace orvu {

LibraryQuestion::LibraryQuestion(LibraryView& library) {
    add_css_class("sheets");
    card_.add_css_class("sheet");
    card_.add_css_class("profile-question");
    card_.property_accessible_role() = Gtk::Accessible::Role::DIALOG;
    setAccessibleLabel(card_, std::string{LibraryView::clearHeading});
    card_.set_expand(true);
    card_.set_halign(Gtk::Align::CENTER);
    card_.set_valign(Gtk::Align::CENTER);
    heading_.set_text(std::string{LibraryView::clearHeading});
    heading_.add_css_class("sheet-question");
    heading_.set_xalign(0);
    card_.append(heading_);
    line_.add_css_class("sheet-buttons");
    for (std::size_t i = 0; i < buttons_.size(); ++i) {
        const auto& answer = LibraryView::clearAnswers.at(i);
        Gtk::Button& button = buttons_.at(i);
        button.set_label(std::string{answer.title});
        button.add_css_class("sheet-button");
        if (answer.clearing != LibraryView::Clearing::cancel) button.add_css_class("destructive");
        button.signal_clicked().connect(
            [&library, clearing = answer.clearing] { library.clear(clearing); });
        line_.append(button);
    }
    card_.append(line_);
    append(card_);
    const auto keys = Gtk::EventControllerKey::create();
    keys->signal_key_pressed().connect(
        [&library](guint key, guint, Gdk::ModifierType) {
            if (key != GDK_KEY_Escape) return false;
            library.clear(LibraryView::Clearing::cancel);
            return true;
        },
        false);
    add_controller(keys);
}

}  // namespace orvu
