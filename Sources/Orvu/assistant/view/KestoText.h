#pragma once

#include <gtkmm/label.h>

namespace orvu {

inline constexpr int narrowestLabel = 12;  ///< characters

/// Makes a label of several lines: as wide as it may be, whatever its words are. The narrowest that
/// it could be is given, as the toolkit would lay a long text out letter below letter to know it.
inline void wrapText(Gtk::Label& label) {
    label.set_wrap(true);
    label.set_wrap_mode(Pango::WrapMode::WORD_CHAR);
    label.set_width_chars(narrowestLabel);
    label.set_max_width_chars(narrowestLabel);
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
