#include "notch/view/NotchField.h"

#include "look/text/OneLine.h"
#include "look/text/TextDirection.h"
#include "look/view/Accessible.h"
#include "look/view/Keyboard.h"
#include "notch/PastedText.h"

#include <gdk/gdkkeysyms.h>
#include <gtkmm/eventcontrollerkey.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <optional>
#include <utility>

namespace orvu {
namespace {

const auto modifiers = Gdk::ModifierType::CONTROL_MASK | Gdk::ModifierType::SHIFT_MASK |
                       Gdk::ModifierType::ALT_MASK | Gdk::ModifierType::SUPER_MASK |
                       Gdk::ModifierType::META_MASK;

/// The key that the notch may want; with modifiers most belong to the text.
std::optional<NotchKey> notchKey(guint key, Gdk::ModifierType held) {
    if (isReturnKey(key)) {
        return (held & Gdk::ModifierType::CONTROL_MASK) == Gdk::ModifierType::CONTROL_MASK
                   ? NotchKey::commandEnter
                   : NotchKey::enter;
    }
    if (key == GDK_KEY_Escape) return NotchKey::escape;
    if (held != Gdk::ModifierType{}) return std::nullopt;
    switch (key) {
        case GDK_KEY_Tab:
        case GDK_KEY_KP_Tab:
            return NotchKey::tab;
        case GDK_KEY_Right:
        case GDK_KEY_KP_Right:
            return NotchKey::rightArrow;
        case GDK_KEY_Down:
        case GDK_KEY_KP_Down:
            return NotchKey::downArrow;
        case GDK_KEY_Up:
        case GDK_KEY_KP_Up:
            return NotchKey::upArrow;
        default:
            return std::nullopt;
    }
}

}  // namespace

NotchField::NotchField(Handlers handlers) : handlers_(std::move(handlers)) {
    add_css_class("notch-field");
    entry_.add_css_class("notch-entry");
    const std::string prompt{AddressNotch::prompt};
    entry_.set_placeholder_text(prompt);
    entry_.set_width_chars(1);
    setAccessibleLabel(entry_, prompt);
    entry_.set_parent(*this);
    ghost_.add_css_class("notch-ghost");
    ghost_.set_ellipsize(Pango::EllipsizeMode::END);
    ghost_.set_can_target(false);
    hideFromAccessibility(ghost_);
    ghost_.set_parent(*this);
    const auto keys = Gtk::EventControllerKey::create();
    keys->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
    keys->signal_key_pressed().connect(
        [this](guint key, guint, Gdk::ModifierType state) { return keyPressed(key, state); },
        false);
    entry_.add_controller(keys);
    entry_.signal_changed().connect(sigc::mem_fun(*this, &NotchField::textChanged));
    followInner();
}

NotchField::~NotchField() {
    keepSelection();
    g_signal_handlers_disconnect_by_data(inner(), this);
    ghost_.unparent();
    entry_.unparent();
}

GtkText* NotchField::inner() {
    return GTK_TEXT(gtk_editable_get_delegate(GTK_EDITABLE(entry_.gobj())));
}

void NotchField::followInner() {
    const auto moved =
        +[](GObject*, GParamSpec*, gpointer self) { static_cast<NotchField*>(self)->caretMoved(); };
    g_signal_connect(inner(), "notify::cursor-position", G_CALLBACK(moved), this);
    g_signal_connect(inner(), "notify::selection-bound", G_CALLBACK(moved), this);
    g_signal_connect(inner(), "insert-text",
                     G_CALLBACK(+[](GtkEditable* editable, const char* text, int length, int* at,
                                    gpointer self) {
                         const auto size =
                             length < 0 ? std::strlen(text) : static_cast<std::size_t>(length);
                         if (static_cast<NotchField*>(self)->insert({text, size}, *at)) {
                             g_signal_stop_emission_by_name(editable, "insert-text");
                         }
                     }),
                     this);
    g_signal_connect(inner(), "preedit-changed",
                     G_CALLBACK(+[](GtkText*, const char* preedit, gpointer self) {
                         auto& field = *static_cast<NotchField*>(self);
                         field.isComposing_ = *preedit != '\0';
                         field.caretMoved();
                     }),
                     this);
}

bool NotchField::insert(std::string_view text, int& at) {
    const std::string line = pastedText(text);
    if (line == text) return false;
    gtk_editable_insert_text(GTK_EDITABLE(inner()), line.c_str(), static_cast<int>(line.size()),
                             &at);
    return true;
}

void NotchField::setText(const std::string& text) {
    const std::string line = pastedText(text);
    if (entry_.get_text().raw() == line) return;
    isSetting_ = true;
    entry_.set_text(line);
    entry_.set_position(-1);
    isSetting_ = false;
    caretMoved();
}

void NotchField::focusAll() {
    entry_.grab_focus();
    entry_.select_region(0, -1);
    selectAllAgain();
}

void NotchField::selectAllAgain() {
    // A selection ends when the display says that another one was made, and may say so late, of
    // one that was made before. The person has not touched the field until the next frame.
    if (selectAgain_ != 0) return;
    selectAgain_ = add_tick_callback([this](const Glib::RefPtr<Gdk::FrameClock>&) {
        selectAgain_ = 0;
        entry_.select_region(0, -1);
        return false;
    });
}

void NotchField::keepSelection() {
    if (selectAgain_ != 0) remove_tick_callback(selectAgain_);
    selectAgain_ = 0;
}

void NotchField::setGhost(const std::string& ghost) {
    // Others write it, at any length; the mark in front keeps a blank at its head.
    constexpr std::string_view mark = "|";
    constexpr std::size_t limit = 200;
    const std::string shown =
        ghost.empty() ? "" : oneLine(std::string{mark} + ghost, limit).substr(mark.size());
    if (ghost_.get_text().raw() == shown) return;
    ghost_.set_text(shown);
    queue_allocate();
}

void NotchField::describe(const std::string& text) { setAccessibleDescription(entry_, text); }

bool NotchField::isCaretAtEnd() {
    if (isComposing_) return false;
    int begin = 0;
    int end = 0;
    if (entry_.get_selection_bounds(begin, end) && begin != end) return false;
    return entry_.get_position() == static_cast<int>(entry_.get_text_length());
}

void NotchField::textChanged() {
    queue_allocate();
    keepSelection();
    // The text goes first: where the caret stands has a meaning only in it.
    if (!isSetting_) handlers_.text(entry_.get_text().raw());
    caretMoved();
}

void NotchField::caretMoved() {
    queue_allocate();
    if (!isSetting_) handlers_.caretAtEnd(isCaretAtEnd());
}

bool NotchField::keyPressed(guint key, Gdk::ModifierType state) {
    keepSelection();
    if (isComposing_) return false;
    const auto wanted = notchKey(key, state & modifiers);
    return wanted && handlers_.key(*wanted);
}

bool NotchField::grab_focus_vfunc() { return entry_.grab_focus(); }

Gtk::SizeRequestMode NotchField::get_request_mode_vfunc() const {
    return Gtk::SizeRequestMode::CONSTANT_SIZE;
}

void NotchField::measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum,
                               int& natural, int& minimumBaseline, int& naturalBaseline) const {
    int least = 0;
    int wanted = 0;
    ghost_.measure(orientation, forSize, least, wanted, minimumBaseline, naturalBaseline);
    entry_.measure(orientation, forSize, minimum, natural, minimumBaseline, naturalBaseline);
    if (orientation == Gtk::Orientation::VERTICAL) natural = std::max(natural, wanted);
    minimumBaseline = naturalBaseline = -1;
}

void NotchField::size_allocate_vfunc(int width, int height, int baseline) {
    entry_.size_allocate({0, 0, width, height}, baseline);
    placeGhost(width, height);
}

void NotchField::placeGhost(int width, int height) {
    const auto length = static_cast<gsize>(entry_.get_text_length());
    graphene_rect_t caret;
    gtk_text_compute_cursor_extents(inner(), length, &caret, nullptr);
    const graphene_point_t from{caret.origin.x, caret.origin.y};
    graphene_point_t to{0, 0};
    const bool known = gtk_widget_compute_point(GTK_WIDGET(inner()), gobj(), &from, &to);
    const int x = static_cast<int>(std::lround(to.x));
    int least = 0;
    int wanted = 0;
    int none = 0;
    ghost_.measure(Gtk::Orientation::HORIZONTAL, -1, least, wanted, none, none);
    // Text that runs from right to left goes on at the caret's left side.
    const bool leftwards = runsLeftwards(entry_.get_text().raw());
    const int room = leftwards ? x : width - x;
    const bool fits = known && x >= 0 && x <= width && room >= least;
    ghost_.set_child_visible(fits && !ghost_.get_text().empty());
    if (!fits) return;
    const int taken = std::min(wanted, room);
    ghost_.size_allocate({leftwards ? x - taken : x, 0, taken, height}, -1);
}

}  // namespace orvu
