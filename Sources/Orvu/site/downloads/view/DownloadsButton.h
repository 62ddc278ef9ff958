#pragma once

#include "look/view/FrameRefresh.h"
#include "site/Downloads.h"
#include "site/downloads/view/DownloadRing.h"
#include "site/downloads/view/DownloadsPopover.h"

#include <gtkmm/button.h>
#include <gtkmm/image.h>
#include <gtkmm/stack.h>

namespace orvu {

/// The button of the top bar that tells how far the downloads are and opens their list. It is
/// there while the list holds something.
class DownloadsButton : public Gtk::Button {
public:
    /// `store` must outlive this.
    explicit DownloadsButton(DownloadStore& store);
    ~DownloadsButton() override;

private:
    void open();
    void closed();
    void changed();
    void refresh();

    DownloadStore& store_;
    Gtk::Stack face_;
    Gtk::Image arrow_;
    DownloadRing ring_;
    DownloadsPopover list_;
    FrameRefresh refresh_;
};

}  // namespace orvu
