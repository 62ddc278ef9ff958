#pragma once

#include "foundation/Color.h"

#include <cairomm/surface.h>
#include <gtkmm/settings.h>
#include <gtkmm/window.h>

#include <functional>
#include <string>

namespace orvu {

/// What was drawn, on black.
class Picture {
public:
    /// `scale` is the number of the picture's pixels for each of the program's.
    Picture(int width, int height, int scale = 1);

    [[nodiscard]] const Cairo::RefPtr<Cairo::ImageSurface>& surface() const { return surface_; }
    /// The colour at a place in the picture's own pixels.
    [[nodiscard]] Color at(int x, int y) const;
    /// Leaves the picture in the folder for artefacts, if there is one.
    void keep(const std::string& name) const;

private:
    Cairo::RefPtr<Cairo::ImageSurface> surface_;
};

/// A window of the program with one widget in it.
class Stage {
public:
    explicit Stage(Gtk::Widget& child);
    ~Stage();

    [[nodiscard]] Gtk::Window& window() { return window_; }
    /// What a widget of the window draws now.
    [[nodiscard]] static Picture draw(Gtk::Widget& widget, int width, int height, int scale = 1);

private:
    Gtk::Window window_;
};

/// Runs the main loop until the condition holds; false if it doesn't within ten seconds.
[[nodiscard]] bool waitUntil(const std::function<bool()>& condition);

/// Switches animations on or off, and back at its end.
class Animations {
public:
    explicit Animations(bool on) : before_(setting()) { setting() = on; }
    Animations(const Animations&) = delete;
    Animations& operator=(const Animations&) = delete;
    ~Animations() { setting() = before_; }

    static Glib::PropertyProxy<bool> setting() {
        return Gtk::Settings::get_default()->property_gtk_enable_animations();
    }

private:
    bool before_;
};

}  // namespace orvu
