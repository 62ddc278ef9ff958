#pragma once

#include "foundation/text/Translation.h"
#include "site/Downloads.h"
#include "site/downloads/view/DownloadRow.h"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/popover.h>
#include <gtkmm/scrolledwindow.h>
#include <gtkmm/separator.h>

#include <vector>

namespace orvu {

/// The list of downloads. It has rows only while it is open.
class DownloadsPopover : public Gtk::Popover {
public:
    /// `store` must outlive this.
    explicit DownloadsPopover(DownloadStore& store);

    void open();
    /// Brings the rows up to date, if it is open. Each row follows its own download.
    void refresh();

private:
    void syncRows();
    void closed();

    DownloadStore& store_;
    std::vector<DownloadRow*> rows_;  ///< as they stand
    Gtk::Box whole_{Gtk::Orientation::VERTICAL};
    Gtk::ScrolledWindow scroll_;
    Gtk::Box list_{Gtk::Orientation::VERTICAL};
    Gtk::Separator divider_;
    Gtk::Button clear_{phrase("Clear Finished").c_str()};
};

}  // namespace orvu
