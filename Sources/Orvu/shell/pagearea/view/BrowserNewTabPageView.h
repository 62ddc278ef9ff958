#pragma once

#include "core/BrowserStore.h"
#include "look/view/DotFaceView.h"
#include "look/drawing/view/DottedPaperView.h"
#include "look/view/FrameRefresh.h"
#include "look/layout/view/MaximumWidth.h"
#include "look/layout/view/WrappingRow.h"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/entry.h>
#include <gtkmm/image.h>
#include <gtkmm/overlay.h>
#include <gtkmm/scrolledwindow.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace orvu {

/// What an empty tab shows: a field to begin with, and the sites visited last.
class BrowserNewTabPageView : public Gtk::Overlay {
public:
    /// `ask` hands a question to the assistant.
    BrowserNewTabPageView(std::shared_ptr<BrowserStore> store,
                          std::function<void(const std::string&)> ask);

    void focusField() { text_.grab_focus(); }

private:
    static constexpr int spacing = 26;
    static constexpr int padding = 40;
    static constexpr int fieldWidth = 640;

    void addFace();
    void addField();
    void refresh();
    void showSites(const std::vector<Visit>& sites);

    const std::shared_ptr<BrowserStore> store_;
    const std::function<void(const std::string&)> ask_;
    Gtk::ScrolledWindow scroll_;  // for panes that are lower than what stands in them
    DottedPaperView paper_{Paint{Desk::ink, DottedPaper::opacity}};
    Gtk::Box column_{Gtk::Orientation::VERTICAL, spacing};
    Gtk::Box faceTile_;
    Gtk::Box faceScreen_;
    DotFaceView face_{5, 2.5};
    Gtk::Box field_;
    Gtk::Image magnifier_;
    Gtk::Entry text_;
    Gtk::Button askButton_;
    MaximumWidth fieldPlace_{field_, fieldWidth};
    WrappingRow sites_{14};
    std::vector<Visit> shownSites_;
    FrameRefresh refresh_;
};

}  // namespace orvu
