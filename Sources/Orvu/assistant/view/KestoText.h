#pragma once

#include <gtkmm/label.h>

namespace orvu {

/// Makes a label of several lines: as wide as it may be, whatever its words are.
inline void wrapText(Gtk::Label& label) {
    label.set_wrap(true);
    label.set_wrap_mode(Pango::WrapMode::WORD_CHAR);
    label.set_max_width_chars(1);
    label.set_hexpand(true);
    label.set_xalign(0);
}

/// Makes a label of one line, cut at its end.
inline void cutText(Gtk::Label& label) {
    label.set_ellipsize(Pango::EllipsizeMode::END);
    label.set_single_line_mode(true);
    label.set_xalign(0);
}

}  // namespace orvu
