#pragma once

#include "library/LibraryView.h"
#include "site/icons/view/SiteIcon.h"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/label.h>

#include <optional>

namespace orvu {

/// A line of the library about a page. It shows one entry after the other, as the list is scrolled.
class LibraryRow : public Gtk::Button {
public:
    static constexpr int height = 44;  ///< points

    explicit LibraryRow(const SiteIcons& icons);

    void show(const LibraryEntry& entry, const LibraryView::Row& row);
    /// Shows nothing any more.
    void clear() { entry_.reset(); }
    [[nodiscard]] const std::optional<LibraryEntry>& entry() const { return entry_; }

private:
    std::optional<LibraryEntry> entry_;
    Gtk::Box line_;
    SiteIcon icon_;
    Gtk::Label title_;
    Gtk::Label host_;
    Gtk::Label time_;
};

/// The header of a day.
class LibraryHeader : public Gtk::Label {
public:
    static constexpr int height = 36;  ///< points

    LibraryHeader();

    void show(const LibraryEntry& entry, const std::string& title);
    void clear() { entry_.reset(); }
    [[nodiscard]] const std::optional<LibraryEntry>& entry() const { return entry_; }

private:
    std::optional<LibraryEntry> entry_;
};

}  // namespace orvu
