#pragma once

#include <gtkmm/label.h>

namespace orvu {

/// A text of up to `longest` characters stands whole, however little room there is; a longer one
/// ends where its room does.
inline void limitLength(Gtk::Label& label, int longest) {
    const bool isLong = label.get_text().size() > static_cast<std::size_t>(longest);
    label.set_ellipsize(isLong ? Pango::EllipsizeMode::END : Pango::EllipsizeMode::NONE);
    label.set_max_width_chars(isLong ? longest : -1);
}

}  // namespace orvu
