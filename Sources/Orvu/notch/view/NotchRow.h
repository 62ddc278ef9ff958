#pragma once

#include "notch/candidates/NotchEntry.h"
#include "site/icons/view/SiteIcon.h"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/image.h>
#include <gtkmm/label.h>

#include <functional>
#include <string>

namespace orvu {

/// One candidate in the notch's list, under the heading of its section if it is the first there.
class NotchRow : public Gtk::Box {
public:
    enum class Heading { no, yes };

    /// `favicons` must outlive the row. `chosen` is called at a click.
    NotchRow(SiteIcons icons, const std::function<void()>& chosen);

    void show(const NotchEntry& entry, Heading heading);
    void setSelected(bool selected);
    /// What assistive technology calls the row.
    [[nodiscard]] const std::string& name() const { return name_; }
    [[nodiscard]] Gtk::Widget& row() { return button_; }

private:
    void addParts();
    void showIcon(const NotchEntry::Icon& icon);
    void showTitle(const NotchEntry& entry);

    NotchEntry shown_;
    std::string name_;
    Gtk::Label heading_;
    Gtk::Button button_;
    Gtk::Box parts_{Gtk::Orientation::HORIZONTAL, 10};
    Gtk::Box iconPlace_;
    SiteIcon site_;
    Gtk::Image sign_;
    Gtk::Label title_;
    Gtk::Label detail_;
    Gtk::Label hint_;
};

}  // namespace orvu
