#pragma once

#include "core/BrowserStore.h"
#include "look/drawing/view/BrowserLoadingDots.h"
#include "look/layout/view/FirstInFull.h"
#include "notch/NotchResting.h"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/image.h>
#include <gtkmm/label.h>
#include <gtkmm/overlay.h>

#include <functional>

namespace orvu {

/// The closed notch: a badge of the site, where the page is, whether its article is shown, and
/// whether it is bookmarked. Dots along its lower edge tell how far the page has loaded.
class NotchRestingView : public Gtk::Overlay {
public:
    static constexpr int height = 42;

    /// `store` and `badge`, which stands at the head, must outlive the view. `opened` is called
    /// with the address at a click.
    NotchRestingView(BrowserStore& store, Gtk::Widget& badge,
                     std::function<void(const std::string&)> opened);
    ~NotchRestingView() override;

    void refresh(const BrowserTab& tab);

private:
    void addLabel();
    void addTool(Gtk::Button& button, Gtk::Image& symbol, const char* action);
    void refreshReader(const BrowserTab& tab);
    void refreshBookmark(const BrowserTab& tab);

    BrowserStore& store_;
    const std::function<void(const std::string&)> opened_;
    NotchResting shown_;
    Gtk::Box row_{Gtk::Orientation::HORIZONTAL, 8};
    Gtk::Widget& badge_;
    Gtk::Button open_;
    Gtk::Label site_;
    Gtk::Label quiet_;
    FirstInFull label_{site_, quiet_};
    Gtk::Button reader_;
    Gtk::Image book_;
    NotchReader shownReader_;
    Gtk::Button bookmark_;
    Gtk::Image star_;
    NotchBookmark shownBookmark_;
    BrowserLoadingDots dots_{60};
};

}  // namespace orvu
