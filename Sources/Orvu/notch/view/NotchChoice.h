#pragma once

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/label.h>

#include <string>

namespace orvu {

/// One of the two fixed rows of the notch: an icon, a title over a subtitle, and a key.
class NotchChoice : public Gtk::Button {
public:
    explicit NotchChoice(const std::string& key);

    /// Where the icon stands.
    [[nodiscard]] Gtk::Box& iconPlace() { return iconPlace_; }
    void show(const std::string& title, const std::string& subtitle);
    void setHighlighted(bool highlighted);

private:
    Gtk::Box parts_{Gtk::Orientation::HORIZONTAL, 10};
    Gtk::Box iconPlace_;
    Gtk::Box texts_{Gtk::Orientation::VERTICAL};
    Gtk::Label title_;
    Gtk::Label subtitle_;
    Gtk::Label key_;
};

}  // namespace orvu
