#include "shell/profiles/view/ProfileSheets.h"

#include "look/view/Accessible.h"
#include "look/view/Children.h"

#include <gdk/gdkkeysyms.h>
#include <gtkmm/eventcontrollerkey.h>

#include <string>

namespace orvu {

ProfileSheets::ProfileSheets(ProfileSwitcher& switcher) : switcher_(switcher) {
    add_css_class("sheets");
    card_.add_css_class("sheet");
    card_.set_expand(true);
    card_.set_halign(Gtk::Align::CENTER);
    card_.set_valign(Gtk::Align::CENTER);
    card_.property_accessible_role() = Gtk::Accessible::Role::DIALOG;
    append(card_);
    addKeys();
}

ProfileSheets::~ProfileSheets() { setChildren(card_, {}); }

void ProfileSheets::addKeys() {
    const auto keys = Gtk::EventControllerKey::create();
    keys->signal_key_pressed().connect(
        [this](guint key, guint, Gdk::ModifierType) {
            if (key != GDK_KEY_Escape) return false;
            cancel();
            return true;
        },
        false);
    add_controller(keys);
}

void ProfileSheets::cancel() {
    if (switcher_.deleting.get()) {
        switcher_.answer(ProfileSwitcher::Question::Answer::cancel);
    } else if (editor_) {
        editor_->cancel();
    }
}

void ProfileSheets::show() {
    // What was shown before goes only now: one of its buttons may have ended it.
    setChildren(card_, {});
    question_.reset();
    sheet_.reset();
    editor_.reset();
    if (const auto question = switcher_.question()) {
        question_ = std::make_unique<ProfileQuestionView>(switcher_, *question);
        setCard(*question_, question->message + " " + question->text);
        question_->focusCancel();
    } else {
        editor_ = switcher_.editor();
        sheet_ = std::make_unique<ProfileEditorView>(*editor_);
        setCard(*sheet_, std::string{editor_->heading()});
        sheet_->focusName();
    }
}

void ProfileSheets::setCard(Gtk::Widget& card, const std::string& name) {
    setAccessibleLabel(card_, name);
    setChildren(card_, {&card});
}

}  // namespace orvu
