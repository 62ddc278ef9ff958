#pragma once

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/centerbox.h>
#include <gtkmm/label.h>
#include <gtkmm/window.h>
#include <gtkmm/windowhandle.h>

#include <string>

namespace orvu {

/// A window of fixed size that belongs to the whole program, such as that of its settings: a bar
/// with a button that closes, and below it the content. It is hidden when it is closed. The keys of
/// the program work in it, and Escape closes it too.
class ToolWindow : public Gtk::Window {
public:
    struct Traits {
        std::string title;
        int width = 0;   ///< points
        int height = 0;  ///< points
        std::string cssClass;
        bool showsTitle = true;
        bool movesByBackground = false;  ///< it can be dragged by any ground of its content
    };

    explicit ToolWindow(const Traits& traits);
    ~ToolWindow() override { notify_callbacks(); }

protected:
    /// Puts it below the bar, in place of what was there.
    void setContent(Gtk::Widget& content);

private:
    void addBar(const Traits& traits);
    void addKeys();

    Gtk::Box invisibleTitlebar_;
    Gtk::WindowHandle ground_;
    Gtk::Box column_{Gtk::Orientation::VERTICAL};
    Gtk::WindowHandle bar_;
    Gtk::CenterBox barLine_;
    Gtk::Button close_;
    Gtk::Label title_;
    Gtk::Widget* content_ = nullptr;
};

}  // namespace orvu
