#pragma once

#include "core/BrowserStore.h"
#include "look/view/FrameRefresh.h"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/label.h>
#include <gtkmm/scrolledwindow.h>

#include <map>
#include <memory>

namespace orvu {

/// One tab in the list.
class TabRow : public Gtk::Box {
public:
    TabRow(BrowserStore& store, const std::shared_ptr<BrowserTab>& tab);
    void setActive(bool active);

private:
    void refresh();

    BrowserStore& store_;
    const std::weak_ptr<BrowserTab> tab_;  // a closed tab must not live on in its row
    Gtk::Button select_;
    Gtk::Label title_;
    Gtk::Button close_;
    FrameRefresh refresh_;
};

/// The tabs of a window, in their order. A row lives as long as its tab.
class TabList : public Gtk::Box {
public:
    static constexpr int width = 228;

    explicit TabList(std::shared_ptr<BrowserStore> store);
    ~TabList() override;

private:
    void refresh();

    const std::shared_ptr<BrowserStore> store_;
    Gtk::Button newTab_;
    Gtk::Label newTabTitle_{"New tab"};
    Gtk::ScrolledWindow scroll_;
    Gtk::Box rows_{Gtk::Orientation::VERTICAL};
    std::map<Uuid, std::unique_ptr<TabRow>> rowOf_;
    FrameRefresh refresh_;
};

}  // namespace orvu
