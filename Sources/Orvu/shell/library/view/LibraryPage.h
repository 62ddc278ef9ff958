#pragma once

#include "library/LibraryView.h"
#include "look/view/FrameRefresh.h"
#include "shell/library/view/LibraryList.h"
#include "shell/library/view/LibraryQuestion.h"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/entry.h>
#include <gtkmm/image.h>
#include <gtkmm/label.h>
#include <gtkmm/overlay.h>
#include <gtkmm/scrolledwindow.h>
#include <gtkmm/togglebutton.h>

#include <array>
#include <memory>
#include <optional>
#include <vector>

namespace orvu {

/// The library in the place of the page: its sections at the left; title, search and list at the
/// right.
class LibraryPage : public Gtk::Overlay {
public:
    LibraryPage(std::shared_ptr<BrowserStore> store, AppServices& services);
    ~LibraryPage() override;

    /// Gives the keyboard to the search, or to the question that stands over all.
    void focusContent();
    /// The parts that the keyboard can go to, in their order.
    [[nodiscard]] std::vector<Gtk::Widget*> areas() { return {&side_, &main_}; }

private:
    void addSide();
    void addMain();
    void addSearch();
    void addKeys();
    void startTyping(gunichar character);
    void refresh();
    void showQuestion();

    const std::shared_ptr<BrowserStore> store_;
    LibraryView library_;
    Gtk::Box columns_;
    Gtk::Box side_{Gtk::Orientation::VERTICAL};
    std::array<Gtk::ToggleButton, LibraryView::sections.size()> sections_;
    Gtk::Button back_;
    Gtk::Box main_{Gtk::Orientation::VERTICAL};
    Gtk::Box titleLine_;
    Gtk::Label title_;
    Gtk::Button clear_{std::string{LibraryView::clearTitle}};
    Gtk::Box searchLine_;
    Gtk::Image magnifier_;
    Gtk::Entry search_;
    Gtk::Box body_;
    Gtk::ScrolledWindow scroller_;
    Gtk::Label empty_;
    std::optional<LibraryList> list_;
    std::unique_ptr<LibraryQuestion> question_;
    std::unique_ptr<LibraryQuestion> answered_;  ///< gone, and about to be destroyed
    std::optional<LibraryView::Section> shownSection_;
    FrameRefresh refresh_;
};

}  // namespace orvu
