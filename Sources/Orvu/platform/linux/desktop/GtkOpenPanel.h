#pragma once

#include "platform/OpenPanel.h"

#include <gtkmm/filechoosernative.h>
#include <gtkmm/window.h>

namespace orvu {

/// The desktop's own panel, over a window; the toolkit's where the desktop has none.
class GtkOpenPanel : public OpenPanel {
public:
    /// `window` must outlive the panel.
    explicit GtkOpenPanel(Gtk::Window& window) : window_(window) {}

    [[nodiscard]] Future<std::optional<std::filesystem::path>> chooseHtml(
        const std::string& message) override;

private:
    Gtk::Window& window_;
    Glib::RefPtr<Gtk::FileChooserNative> chooser_;
};

}  // namespace orvu
