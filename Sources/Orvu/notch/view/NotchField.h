#pragma once

#include "notch/AddressNotchBody.h"

#include <gtkmm/entry.h>
#include <gtkmm/label.h>

#include <functional>
#include <string>

namespace orvu {

/// The text field of the notch, with a completion right behind the caret. While an input method
/// composes, every key is its own.
class NotchField : public Gtk::Widget {
public:
    /// What the field tells of the user's doings.
    struct Handlers {
        std::function<void(const std::string&)> text;
        /// The caret came to stand behind the whole text, or left that place.
        std::function<void(bool)> caretAtEnd;
        /// False for a key that is the text's own.
        std::function<bool(NotchKey)> key;
    };

    explicit NotchField(Handlers handlers);
    ~NotchField() override;

    /// Shows `text`, with the caret behind it, unless it stands there already.
    void setText(const std::string& text);
    /// Takes the keyboard with all of the text selected, so that the first key replaces it.
    void focusAll();
    void setGhost(const std::string& ghost);
    /// What assistive technology says of the field beside its name: the chosen row.
    void describe(const std::string& text);

protected:
    [[nodiscard]] Gtk::SizeRequestMode get_request_mode_vfunc() const override;
    void measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum, int& natural,
                       int& minimumBaseline, int& naturalBaseline) const override;
    void size_allocate_vfunc(int width, int height, int baseline) override;
    bool grab_focus_vfunc() override;

private:
    [[nodiscard]] GtkText* inner();
    [[nodiscard]] bool isCaretAtEnd();
    void followInner();
    bool insert(std::string_view text, int& at);
    void selectAllAgain();
    void keepSelection();
    void textChanged();
    void caretMoved();
    bool keyPressed(guint key, Gdk::ModifierType state);
    void placeGhost(int width, int height);

    const Handlers handlers_;
    Gtk::Entry entry_;
    Gtk::Label ghost_;
    bool isComposing_ = false;
    bool isSetting_ = false;
    guint selectAgain_ = 0;
};

}  // namespace orvu
