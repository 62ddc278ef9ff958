#include "shell/library/view/LibraryRow.h"

#include "look/view/Accessible.h"

namespace orvu {
namespace {

constexpr int iconSize = 18;
constexpr int hostCharacters = 28;

void setUp(Gtk::Label& label, const char* style) {
    label.add_css_class(style);
    label.set_xalign(0);
    label.set_ellipsize(Pango::EllipsizeMode::END);
    label.set_single_line_mode(true);
}

}  // namespace

LibraryRow::LibraryRow(const SiteIcons& icons) : icon_(icons, iconSize) {
    add_css_class("library-row");
    property_accessible_role() = Gtk::Accessible::Role::LIST_ITEM;
    line_.add_css_class("library-line");
    icon_.set_valign(Gtk::Align::CENTER);
    line_.append(icon_);
    setUp(title_, "library-title");
    title_.set_hexpand(true);
    line_.append(title_);
    setUp(host_, "library-host");
    host_.set_ellipsize(Pango::EllipsizeMode::START);  // its end tells whose page it is
    host_.set_max_width_chars(hostCharacters);
    line_.append(host_);
    setUp(time_, "library-time");
    line_.append(time_);
    set_child(line_);
}

void LibraryRow::show(const LibraryEntry& entry, const LibraryView::Row& row) {
    entry_ = entry;
    icon_.setHost(row.iconHost());
    title_.set_text(row.title);
    host_.set_text(row.host);
    time_.set_text(row.time);
    setAccessibleLabel(*this, row.accessibleName());
}

LibraryHeader::LibraryHeader() { setUp(*this, "library-day"); }

void LibraryHeader::show(const LibraryEntry& entry, const std::string& title) {
    entry_ = entry;
    set_text(title);
}

}  // namespace orvu
