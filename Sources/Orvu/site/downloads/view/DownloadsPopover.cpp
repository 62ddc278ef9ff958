#include "site/downloads/view/DownloadsPopover.h"

#include "foundation/text/Translation.h"
#include "look/view/Accessible.h"

#include <algorithm>
#include <unordered_set>

namespace orvu {
namespace {

constexpr int width = 340;
constexpr int maxHeight = 420;

}  // namespace

DownloadsPopover::DownloadsPopover(DownloadStore& store) : store_(store) {
    add_css_class("downloads-menu");
    set_has_arrow(false);
    list_.property_accessible_role() = Gtk::Accessible::Role::LIST;
    list_.add_css_class("download-list");
    setAccessibleLabel(list_, phrase("Downloads"));
    scroll_.set_child(list_);
    scroll_.set_policy(Gtk::PolicyType::NEVER, Gtk::PolicyType::AUTOMATIC);
    scroll_.set_propagate_natural_height(true);
    scroll_.set_max_content_height(maxHeight);
    nameScrollBars(scroll_);
    clear_.add_css_class("download-clear");
    clear_.signal_clicked().connect(sigc::mem_fun(store_, &DownloadStore::clearFinished));
    whole_.add_css_class("downloads");
    whole_.set_size_request(width, -1);
    whole_.append(scroll_);
    whole_.append(divider_);
    whole_.append(clear_);
    set_child(whole_);
    signal_closed().connect(sigc::mem_fun(*this, &DownloadsPopover::closed));
}

void DownloadsPopover::open() {
    syncRows();
    popup();
}

void DownloadsPopover::refresh() {
    if (get_visible()) syncRows();
}

/// New ones stand at the head, and the others never change their order.
void DownloadsPopover::syncRows() {
    const auto& items = store_.items();
    const std::unordered_set<std::shared_ptr<DownloadItem>> current{items.begin(), items.end()};
    std::erase_if(rows_, [&](DownloadRow* row) {
        const bool stays = current.contains(row->item());
        if (!stays) list_.remove(*row);
        return !stays;
    });
    for (auto missing = items.size() - rows_.size(); missing > 0; --missing) {
        auto& row = *Gtk::make_managed<DownloadRow>(items[missing - 1]);
        row.connectFocusLost([this] { clear_.grab_focus(); });
        list_.prepend(row);
        rows_.insert(rows_.begin(), &row);
    }
}

void DownloadsPopover::closed() {
    for (DownloadRow* const row : rows_) list_.remove(*row);
    rows_.clear();
}

}  // namespace orvu
