#pragma once

#include "look/view/FrameRefresh.h"
#include "shell/rewind/BrowserRewind.h"
#include "shell/rewind/view/RewindDots.h"
#include "shell/rewind/view/RewindRow.h"

#include <gtkmm/box.h>
#include <gtkmm/label.h>
#include <gtkmm/scrolledwindow.h>

#include <functional>
#include <memory>
#include <vector>

namespace orvu {

/// The time line of today's visits: a dot for each, and the latest ones by name.
class BrowserRewindView : public Gtk::Box {
public:
    /// `dismiss` is called when a visit was chosen, or when none is left; it may end this.
    BrowserRewindView(std::shared_ptr<BrowserStore> store, std::function<void()> dismiss);

    /// Gives the keyboard to the newest visit.
    void focusNewest();

private:
    static constexpr int width = 340;
    static constexpr int padding = 14;

    void addHeader();
    void addDots();
    void storeChanged();
    void fill();
    void showHovered();
    void scrollToNewest();

    const std::shared_ptr<BrowserStore> store_;
    const std::function<void()> dismiss_;
    BrowserRewind rewind_;
    Gtk::Box header_;
    Gtk::Label heading_;
    Gtk::Label time_;
    Gtk::ScrolledWindow scroll_;
    RewindDots dots_;
    Gtk::Box list_{Gtk::Orientation::VERTICAL, 2};
    std::vector<Visit> shown_;  ///< of the rows, in their order
    std::vector<std::unique_ptr<RewindRow>> rows_;
    bool showsNewest_ = true;  ///< the dots are to be scrolled to their end
    FrameRefresh refresh_;
};

}  // namespace orvu
