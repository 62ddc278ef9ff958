#pragma once

#include "look/view/FrameRefresh.h"
#include "site/downloads/DownloadItem.h"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/image.h>
#include <gtkmm/label.h>
#include <gtkmm/progressbar.h>

#include <memory>
#include <string>

namespace orvu {

/// The line of one download in the list. It draws itself anew when its download changes.
class DownloadRow : public Gtk::Box {
public:
    explicit DownloadRow(std::shared_ptr<DownloadItem> item);
    ~DownloadRow() override;

    [[nodiscard]] const std::shared_ptr<DownloadItem>& item() const { return item_; }

    /// Calls `slot` when the row's button goes while it has the keyboard.
    sigc::connection connectFocusLost(const sigc::slot<void()>& slot) {
        return focusLost_.connect(slot);
    }

private:
    void refresh();
    void refreshButton(DownloadItem::State state);
    void press();

    const std::shared_ptr<DownloadItem> item_;
    Gtk::Image document_;
    Gtk::Box texts_{Gtk::Orientation::VERTICAL};
    Gtk::Label name_;
    Gtk::ProgressBar progress_;
    Gtk::Label status_;
    Gtk::Button button_;
    Gtk::Image symbol_;
    std::string spoken_;
    sigc::signal<void()> focusLost_;
    FrameRefresh refresh_;
};

}  // namespace orvu
