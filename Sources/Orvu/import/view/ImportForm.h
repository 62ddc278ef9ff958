#pragma once

#include "import/ImportView.h"
#include "look/drawing/view/BrowserLoadingDots.h"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/label.h>
#include <gtkmm/scrolledwindow.h>
#include <gtkmm/togglebutton.h>

#include <memory>
#include <vector>

namespace orvu {

/// What an `ImportView` says, from top to bottom: the browsers, what to bring, what came of it, and
/// the buttons. Arrows go among the browsers and choose; Return imports.
class ImportForm : public Gtk::Box {
public:
    explicit ImportForm(std::shared_ptr<ImportView> import);
    ~ImportForm() override;

    /// The button that imports.
    [[nodiscard]] Gtk::Button& runButton() { return run_; }

private:
    void addHead();
    void addChoices();
    void addAccessPanel();
    void addFoot();
    void addKeys();
    [[nodiscard]] bool moveInList(int step);
    void showSources();
    void showOutcome();
    void refresh();

    const std::shared_ptr<ImportView> import_;
    Gtk::Label intro_;
    Gtk::ScrolledWindow scroller_;
    Gtk::Box list_{Gtk::Orientation::VERTICAL};
    std::vector<ImportView::Source> shown_;
    std::vector<Gtk::ToggleButton*> rows_;
    Gtk::Box middle_{Gtk::Orientation::VERTICAL};
    Gtk::Box choices_{Gtk::Orientation::VERTICAL};
    Gtk::Box access_{Gtk::Orientation::VERTICAL};
    Gtk::Label accessHelp_;
    Gtk::Box outcome_{Gtk::Orientation::VERTICAL};
    Gtk::Label message_;
    Gtk::Label help_;
    Gtk::Box foot_;
    Gtk::Box progress_;
    BrowserLoadingDots dots_;
    Gtk::Button file_{std::string{ImportView::fileTitle}};
    Gtk::Button run_;
};

}  // namespace orvu
