#include "shell/view/TabList.h"

#include "look/PlatformText.h"
#include "look/view/Accessible.h"

#include <set>

namespace orvu {

TabRow::TabRow(BrowserStore& store, const std::shared_ptr<BrowserTab>& tab)
    : store_(store), tab_(tab), refresh_(*this, [this] { refresh(); }) {
    gtk_widget_add_css_class(Gtk::Widget::gobj(), "tab-row");
    property_accessible_role() = Gtk::Accessible::Role::LIST_ITEM;
    title_.set_ellipsize(Pango::EllipsizeMode::END);
    title_.set_xalign(0);
    select_.add_css_class("tab-title");
    select_.set_child(title_);
    select_.set_hexpand(true);
    select_.signal_clicked().connect([this] {
        if (const auto live = tab_.lock()) store_.select(*live);
    });
    append(select_);
    close_.add_css_class("tab-close");
    close_.set_icon_name("window-close-symbolic");
    close_.set_valign(Gtk::Align::CENTER);
    close_.signal_clicked().connect([this] {
        if (const auto live = tab_.lock()) store_.close(*live);
    });
    append(close_);
    tab->connectChanged(sigc::mem_fun(refresh_, &FrameRefresh::mark));
    refresh();
}

void TabRow::setActive(bool active) {
    if (active) {
        add_css_class("active");
    } else {
        remove_css_class("active");
    }
    setAccessibleSelected(*this, active);
}

void TabRow::refresh() {
    const auto tab = tab_.lock();
    if (!tab) return;
    const std::string title = tab->title();
    title_.set_text(title);
    set_tooltip_text(title);
    setAccessibleLabel(*this, title);
    setAccessibleLabel(select_, title);
    setAccessibleLabel(close_, "Close " + title);
    if (tab->isPinned()) {
        add_css_class("pinned");
    } else {
        remove_css_class("pinned");
    }
}

TabList::TabList(std::shared_ptr<BrowserStore> store)
    : Gtk::Box(Gtk::Orientation::VERTICAL),
      store_(std::move(store)),
      refresh_(*this, [this] { refresh(); }) {
    add_css_class("tab-column");
    set_size_request(width, -1);
    set_hexpand(false);
    newTab_.add_css_class("new-tab");
    newTabTitle_.set_xalign(0);
    newTab_.set_child(newTabTitle_);
    newTab_.set_tooltip_text(platformText("New tab (⌘T)"));
    setAccessibleLabel(newTab_, "New tab");
    gtk_actionable_set_action_name(GTK_ACTIONABLE(newTab_.gobj()), "win.newTab");
    append(newTab_);
    rows_.property_accessible_role() = Gtk::Accessible::Role::LIST;
    rows_.set_spacing(2);
    setAccessibleLabel(rows_, "Tabs");
    scroll_.set_child(rows_);
    scroll_.set_policy(Gtk::PolicyType::NEVER, Gtk::PolicyType::EXTERNAL);
    scroll_.set_vexpand(true);
    append(scroll_);
    store_->connectChanged(sigc::mem_fun(refresh_, &FrameRefresh::mark));
    refresh();
}

TabList::~TabList() {
    for (const auto& [id, row] : rowOf_) rows_.remove(*row);
}

void TabList::refresh() {
    std::set<Uuid> live;
    for (const auto& tab : store_->tabs()) live.insert(tab->id());
    std::erase_if(rowOf_, [&](const auto& entry) {
        const bool gone = !live.contains(entry.first);
        if (gone) rows_.remove(*entry.second);
        return gone;
    });
    Gtk::Widget* former = nullptr;
    for (const auto& tab : store_->tabs()) {
        auto& row = rowOf_[tab->id()];
        if (!row) {
            row = std::make_unique<TabRow>(*store_, tab);
            rows_.append(*row);
        }
        if (row->get_prev_sibling() != former) {
            if (former) {
                rows_.reorder_child_after(*row, *former);
            } else {
                rows_.reorder_child_at_start(*row);
            }
        }
        row->setActive(store_->activeID() == tab->id());
        former = row.get();
    }
}

}  // namespace orvu
