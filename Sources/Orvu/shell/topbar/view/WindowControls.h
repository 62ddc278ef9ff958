#pragma once

#include <gtkmm/box.h>
#include <gtkmm/button.h>

namespace orvu {

/// The three round buttons that close, minimise and zoom their window.
class WindowControls : public Gtk::Box {
public:
    WindowControls();

private:
    void addButton(Gtk::Button& button, const std::string& label, const char* style,
                   const char* action);

    Gtk::Button close_;
    Gtk::Button minimise_;
    Gtk::Button zoom_;
};

}  // namespace orvu
